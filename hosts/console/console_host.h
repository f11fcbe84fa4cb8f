#pragma once

#include <optional>
#include <string>

#include "addin/Connect.h"
#include "hosts/common/curl_internet.h"
#include "hosts/common/sqlite_settings.h"
#include "hosts/common/system_clock.h"
#include "hosts/console/console_forms.h"
#include "hosts/console/dry_internet.h"
#include "hosts/console/options.h"
#include "hosts/console/output.h"
#include "hosts/console/terminal.h"
#include "hosts/console/watched_internet.h"
#include "platform/memory/memory_recordset.h"
#include "platform/memory/memory_workbook.h"
#include "platform/platform.h"

namespace quorvel {

class frmLogin;

// What the program takes from its environment.
struct Environment {
  std::optional<std::string> password;
  std::optional<std::string> email_password;
  std::optional<std::string> proxy_password;
  std::filesystem::path settings_file;
};

// The console's platform with the add-in connected to it, and the user who logs in.
class ConsoleHost {
 public:
  struct World {
    const Options& options;
    const Environment& environment;
    Output& output;
    const Terminal& terminal;
    bool dry_run = false;  // print the first request instead of sending it; every question is answered
  };

  explicit ConsoleHost(const World& world);
  ConsoleHost(const ConsoleHost&) = delete;
  ConsoleHost& operator=(const ConsoleHost&) = delete;

  [[nodiscard]] const Environment& environment() const { return world_.environment; }
  [[nodiscard]] Output& output() { return world_.output; }
  [[nodiscard]] MemoryApplication& application() { return application_; }
  [[nodiscard]] ConsoleForms& forms() { return forms_; }
  [[nodiscard]] Settings& settings() { return settings_; }
  [[nodiscard]] Connect& connect() { return connect_; }

  // Whether a dry run came as far as its request.
  [[nodiscard]] bool composed() const { return composed_; }

  // Opens a CSV file as the workbook. What is wrong with it is shown, and false.
  [[nodiscard]] bool OpenWorkbook(const std::string& file);
  // Whether the gateway's last answer was one: neither nothing nor a refusal. Says so when it was not.
  [[nodiscard]] bool GatewayAnswered();
  // kDone, or why not: nobody answered a question, the user cancelled, or else it was refused.
  [[nodiscard]] ExitStatus StatusOf(bool done) const;

 private:
  void LogIn(frmLogin& form);
  void Composed(std::string_view path, std::string_view body);

  World world_;
  SystemClock clock_;
  MemoryApplication application_;
  ConsoleForms forms_;
  CurlInternet network_;
  DryInternet dry_internet_;
  bool composed_ = false;
  WatchedInternet internet_;
  SqliteSettings settings_;
  MemoryRecordsets recordsets_;
  Platform platform_;
  Connect connect_;
};

}  // namespace quorvel
