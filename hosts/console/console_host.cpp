#include "hosts/console/console_host.h"

#include <algorithm>
#include <array>

#include "account/frmLogin.h"
#include "hosts/console/csv.h"
#include "hosts/console/dry_run.h"
#include "hosts/console/user.h"

namespace quorvel {

namespace {

constexpr std::array<std::string_view, 7> kRefusals = {"001", "002", "003", "004", "005", "0110", "<ERROR>"};

}  // namespace

ConsoleHost::ConsoleHost(const World& world)
    : world_(world),
      forms_({world.output, world.terminal, clock_, world.options.yes || world.dry_run}),
      network_([this] { return forms_.WantsToGiveUp(); }),
      dry_internet_([this](std::string_view path, std::string_view body) { Composed(path, body); }),
      internet_(world.dry_run ? static_cast<Internet&>(dry_internet_) : network_),
      settings_(world.environment.settings_file),
      recordsets_(clock_),
      platform_{application_, forms_, internet_, settings_, recordsets_, clock_, Windows1252()},
      connect_(platform_) {
  forms_.On<frmLogin>([this](frmLogin& form) { LogIn(form); });
  connect_.OnConnection();
}

void ConsoleHost::LogIn(frmLogin& form) {
  if (world_.options.crn) Type(form.txtCRN, FromUtf8(*world_.options.crn));
  if (world_.options.user) Type(form.txtUserName, FromUtf8(*world_.options.user));
  std::optional<Text> password;
  if (world_.environment.password) {
    password = FromUtf8(*world_.environment.password);
  } else {
    password = forms_.AskSecret(u"Password of " + form.txtUserName.text() + u": ");
  }
  if (password) {
    Type(form.txtPasswd, *password);
    Press(form.cmdLogin);
  } else {
    world_.output.Complain("no password: set QUORVEL_PASSWORD");
  }
  if (form.loaded()) Press(form.cmdCancel);
}

// What the send form says of a request that nobody answers is not for the user of a dry run.
void ConsoleHost::Composed(std::string_view path, std::string_view body) {
  composed_ = true;
  forms_.Mute();
  PrintDryRun(path, body, world_.output);
}

bool ConsoleHost::OpenWorkbook(const std::string& file) {
  const auto fault = ReadCsvFile(file, application_.OpenWorkbook().active());
  if (!fault) return true;
  const std::string line = fault->line == 0 ? "" : ":" + std::to_string(fault->line);
  world_.output.Complain(file + line + ": " + fault->reason);
  return false;
}

bool ConsoleHost::GatewayAnswered() {
  const std::string& answer = internet_.last_answer();
  const bool refused = std::find(kRefusals.begin(), kRefusals.end(), answer) != kRefusals.end();
  if (answer.empty()) world_.output.Complain("the gateway did not answer");
  if (refused) world_.output.Complain("the gateway refused: " + answer);
  return !answer.empty() && !refused;
}

ExitStatus ConsoleHost::StatusOf(bool done) const {
  if (done) return ExitStatus::kDone;
  return forms_.unanswered() || forms_.cancelled() ? ExitStatus::kCancelled : ExitStatus::kRefused;
}

}  // namespace quorvel
