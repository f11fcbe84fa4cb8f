#include "account/settings_store.h"
#include "hosts/console/commands.h"

namespace quorvel {

namespace {

constexpr TextView kBalancePrefix = u"Your credit balance is ";
constexpr TextView kModesDownloaded = u"Mode of submissions has been downloaded";

// The text of the last message, empty when there was none.
Text LastMessage(const Output& output) {
  return output.messages().empty() ? Text() : output.messages().back().text;
}

}  // namespace

ExitStatus RunBalance(ConsoleHost& host) {
  host.connect().GetBalance();
  const Text message = LastMessage(host.output());
  const bool done = message.starts_with(kBalancePrefix);
  if (done) {
    const std::string balance = ToUtf8(message.substr(kBalancePrefix.size()));
    host.output().Print(balance + "\n");
    host.output().result()["balance"] = balance;
  }
  return host.StatusOf(done);
}

ExitStatus RunModes(ConsoleHost& host) {
  host.connect().GetModes();
  const bool done = LastMessage(host.output()) == kModesDownloaded;
  if (done) {
    nlohmann::json& modes = host.output().result()["modes"] = nlohmann::json::array();
    for (const Text& mode : Split(SettingsStore(host.settings()).Read(kModesSetting), u",")) {
      host.output().Print(ToUtf8(mode) + "\n");
      modes.push_back(ToUtf8(mode));
    }
  }
  return host.StatusOf(done);
}

}  // namespace quorvel
