#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>

#include "account/settings_store.h"
#include "hosts/console/commands.h"
#include "hosts/console/interrupts.h"
#include "platform/runtime_error.h"

namespace quorvel {
namespace {

std::optional<std::string> Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

Environment ReadEnvironment(const Options& options) {
  return {.password = Variable("QUORVEL_PASSWORD"),
          .email_password = Variable("QUORVEL_EMAIL_PASSWORD"),
          .proxy_password = Variable("QUORVEL_PROXY_PASSWORD"),
          .settings_file = options.settings_file
                               ? std::filesystem::path(*options.settings_file)
                               : DefaultSettingsFile(std::getenv("XDG_CONFIG_HOME"), std::getenv("HOME"))};
}

// Runs the command that the options name.
class Runner {
 public:
  Runner(const Options& options, Output& output)
      : options_(options), environment_(ReadEnvironment(options)), output_(output) {}

  ExitStatus operator()(const SendOptions& send) {
    ConsoleHost host(World(send.dry_run));
    Text user = FromUtf8(options_.user.value_or(""));
    if (!options_.user) user = SettingsStore(host.settings()).Read(kClientUserNameSetting);
    return RunSend(host, send, user);
  }
  ExitStatus operator()(const SettingsOptions&) {
    return RunSettings(SqliteSettings(environment_.settings_file), output_);
  }
  ExitStatus operator()(const BalanceOptions&) { return With(RunBalance); }
  ExitStatus operator()(const ModesOptions&) { return With(RunModes); }
  ExitStatus operator()(const MenuOptions&) { return With(RunMenu); }
  ExitStatus operator()(const SendersOptions&) { return With(RunSenders); }
  ExitStatus operator()(const ProxyOptions& proxy) { return With(RunProxy, proxy); }
  ExitStatus operator()(const TemplatesOptions& templates) { return With(RunTemplates, templates); }
  ExitStatus operator()(const ReportsOptions& reports) { return With(RunReports, reports); }

 private:
  ConsoleHost::World World(bool dry_run) { return {options_, environment_, output_, terminal_, dry_run}; }

  template <class... Arguments>
  ExitStatus With(ExitStatus (*command)(ConsoleHost&, const Arguments&...), const Arguments&... arguments) {
    ConsoleHost host(World(false));
    return command(host, arguments...);
  }

  const Options& options_;
  Environment environment_;
  Output& output_;
  Terminal terminal_ = Terminal::Standard();
};

ExitStatus Run(const Options& options, Output& output) {
  try {
    return std::visit(Runner(options, output), options.command);
  } catch (const UsageError& error) {
    output.Complain(error.what());
    return ExitStatus::kUsage;
  } catch (const Interrupted&) {
    output.Complain("interrupted");
    return ExitStatus::kCancelled;
  } catch (const std::exception& error) {
    output.Complain(error.what());
    return ExitStatus::kRefused;
  }
}

int Main(int argc, const char* const* argv) {
  const auto parsed = ParseOptions(argc, argv);
  if (const auto* const end = std::get_if<ExitStatus>(&parsed)) return static_cast<int>(*end);
  const auto& options = std::get<Options>(parsed);
  std::signal(SIGPIPE, SIG_IGN);  // a peer that hangs up is a failed write
  InstallInterrupts();
  Output output(std::cout, std::cerr, options.json);
  const ExitStatus status = Run(options, output);
  output.Finish(status);
  return static_cast<int>(status);
}

}  // namespace
}  // namespace quorvel

int main(int argc, char** argv) {
  return quorvel::Main(argc, argv);
}
