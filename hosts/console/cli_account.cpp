#include "account/settings_store.h"
#include "hosts/console/commands.h"

namespace quorvel {

namespace {

constexpr TextView kBalancePrefix = u"Your credit balance is ";
constexpr TextView kModesDownloaded = u"Mode of submissions has been downloaded";

}  // namespace

ExitStatus RunBalance(ConsoleHost& host) {
  host.connect().GetBalance();
  const Text message = host.output().LastMessage();
  const bool done = message.starts_with(kBalancePrefix);
  if (done) {
    const std::string balance = ToUtf8(message.substr(kBalancePrefix.size()));
    host.output().Print({balance, "\n"});
    host.output().result()["balance"] = balance;
  }
  return host.StatusOf(done);
}

ExitStatus RunModes(ConsoleHost& host) {
  host.connect().GetModes();
  const bool done = host.output().LastMessage() == kModesDownloaded;
  if (done) {
    nlohmann::json& modes = host.output().result()["modes"] = nlohmann::json::array();
    for (const Text& mode : Split(SettingsStore(host.settings()).Read(kModesSetting), u",")) {
      host.output().Print({ToUtf8(mode), "\n"});
      modes.push_back(ToUtf8(mode));
    }
  }
  return host.StatusOf(done);
}

}  // namespace quorvel
