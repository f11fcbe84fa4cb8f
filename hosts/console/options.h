#pragma once

#include <optional>
#include <string>
#include <variant>

#include "hosts/console/exit_status.h"

namespace quorvel {

// What the arguments say, in UTF-8, with no more judgement than their form: what a value means is for the
// add-in's forms to say.

struct MessageOptions {
  std::optional<std::string> text;  // "@NAME" is a stored template, "@@" a literal "@"
  std::optional<std::string> file;
};

struct SendOptions {
  std::string workbook;
  std::string column;
  MessageOptions message;
  std::optional<std::string> rows;
  std::optional<std::string> start;
  std::optional<std::string> end;
  std::optional<std::string> filter;
  std::optional<std::string> sender;
  std::optional<std::string> country_code;
  std::optional<std::string> national_length;
  bool ignore_duplicates = false;
  bool unicode = false;
  bool english = false;
  bool flash = false;
  std::optional<std::string> wap_url;
  bool grouped = false;
  std::string header;
  std::string footer;
  std::optional<std::string> email_column;
  std::optional<std::string> email_subject;
  std::optional<std::string> from_email;
  std::optional<std::string> schedule;  // "YYYY-MM-DD HH:MM"
  std::optional<std::string> schedule_column;
  std::string title;
  bool notify = false;
  bool preview = false;
  bool dry_run = false;
};

struct BalanceOptions {};
struct ModesOptions {};
struct SettingsOptions {};
struct MenuOptions {};
struct SendersOptions {};

struct ProxyOptions {
  std::optional<std::string> type;  // "registry", "direct" or "named"; none: show what is set
  std::string host;
  std::string port;
  std::string user;
};

struct TemplatesOptions {
  enum class Action { kList, kSave, kDelete };
  Action action = Action::kList;
  std::string name;
  MessageOptions message;  // of kSave
};

struct ReportsOptions {
  std::string workbook;
  std::string from;  // "YYYY-MM-DD"
  std::string to;
  std::string mode;  // a letter or "ALL"
  std::string sheet;
  std::optional<std::string> output;
};

using CommandOptions = std::variant<SendOptions, BalanceOptions, ModesOptions, ProxyOptions, SettingsOptions,
                                    MenuOptions, TemplatesOptions, SendersOptions, ReportsOptions>;

struct Options {
  std::optional<std::string> crn;
  std::optional<std::string> user;
  std::optional<std::string> settings_file;
  bool yes = false;
  bool json = false;
  CommandOptions command;
};

// The options, or what to end with when there is nothing to do: help was shown, or the usage error was
// reported to standard error.
[[nodiscard]] std::variant<Options, ExitStatus> ParseOptions(int argc, const char* const* argv);

}  // namespace quorvel
