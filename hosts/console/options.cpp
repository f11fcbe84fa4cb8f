#include "hosts/console/options.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>

namespace quorvel {

namespace {

constexpr const char* kAbout =
    "Sends personalised SMS to the mobile numbers in a column of a CSV workbook.\n"
    "\n"
    "#B# in a message stands for the cell in column B of the same row:\n"
    "  quorvel send customers.csv --to C --message \"Hello #A#, your order #B# is ready.\"\n"
    "\n"
    "The account password is taken from QUORVEL_PASSWORD, or asked for on a terminal.";

constexpr const char* kExitStatuses =
    "Exit status: 0 done, 1 refused by the add-in or the gateway, 2 usage,\n"
    "3 cancelled or a question left unanswered, 4 the workbook cannot be read.\n"
    "Messages go to standard error, results to standard output.";

// Adds commands to a program; each fills its own part of the options.
class Parser {
 public:
  explicit Parser(Options& options) : options_(options) {
    app_.fallthrough();
    app_.require_subcommand(1);
    app_.footer(kExitStatuses);
    app_.set_version_flag("--version", "quorvel " QUORVEL_VERSION);
    app_.add_option("--crn", options.crn,
                    "Customer relationship number; by default the one that logged in last")
        ->type_name("CRN");
    app_.add_option("--user", options.user, "User name; by default the one that logged in last")
        ->type_name("NAME");
    app_.add_option("--settings", options.settings_file, "Settings database to use instead of your own")
        ->type_name("FILE");
    app_.add_flag("--yes,-y", options.yes, "Answer every question so that the command goes on");
    app_.add_flag("--json", options.json, "Print messages and results as one JSON object");
    AddSend();
    AddAccount();
    AddProxy();
    AddTemplates();
    AddReports();
    AddInspection();
  }

  // What to end with, if the options say so.
  std::optional<ExitStatus> Parse(int argc, const char* const* argv) {
    try {
      app_.parse(argc, argv);
      return std::nullopt;
    } catch (const CLI::ParseError& error) {
      if (app_.exit(error) == 0) return ExitStatus::kDone;
      if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError)) NameStrangers();
      return ExitStatus::kUsage;
    }
  }

 private:
  // What was given in place of something that is required.
  void NameStrangers() const {
    for (const std::string& stranger : app_.remaining(true))
      std::cerr << "Not known: " << stranger << std::endl;
  }

  template <class T>
  CLI::App& Add(const char* name, const char* description, T& command) {
    CLI::App* const added = app_.add_subcommand(name, description);
    added->callback([this, &command] { options_.command = command; });
    return *added;
  }

  // The command's own callback has to say whether there is one.
  static void Require(const MessageOptions& message) {
    if (!message.text && !message.file) throw CLI::RequiredError("--message or --message-file");
  }

  static void AddMessage(CLI::App& command, MessageOptions& message, const char* text_help) {
    CLI::Option* const text = command.add_option("--message", message.text, text_help)->type_name("TEXT");
    command
        .add_option("--message-file", message.file,
                    "File that is the message, as it stands: a last line end is sent too")
        ->type_name("FILE")
        ->excludes(text);
  }

  void AddSend() {
    CLI::App& command = Add("send", "Send an SMS to every number in a column", send_);
    command.parse_complete_callback([this] { Require(send_.message); });
    command.add_option("workbook", send_.workbook, "CSV file: UTF-8 or UTF-16")
        ->required()
        ->type_name("WORKBOOK");
    command.add_option("--to", send_.column, "Column of the mobile numbers, such as C")
        ->required()
        ->type_name("COLUMN");
    AddMessage(command, send_.message, "The message; #B# is the cell in column B, @NAME a stored template");
    AddSendRows(command);
    AddSendMessageKind(command);
    AddSendSchedule(command);
    AddSendEmail(command);
    command.add_option("--sender", send_.sender, "Sender ID of your account")->type_name("ID");
    command.add_flag("--preview", send_.preview,
                     "Print every message and its SMS count, then ask whether to send");
    command.add_flag("--dry-run", send_.dry_run, "Print the request instead of sending it; needs no account");
  }

  void AddSendRows(CLI::App& command) {
    CLI::Option* const rows =
        command.add_option("--rows", send_.rows, "Rows to send to, such as \"2-19, 27-35\"; by default all")
            ->type_name("LIST");
    command.add_option("--start", send_.start, "First row to send to")->type_name("ROW")->excludes(rows);
    command.add_option("--end", send_.end, "Last row to send to")->type_name("ROW")->excludes(rows);
    command
        .add_option(
            "--filter", send_.filter,
            "Only rows that satisfy a formula over columns of the message, such as \"#B# like 'Bas%'\"")
        ->type_name("FORMULA");
    command.add_flag("--ignore-duplicates", send_.ignore_duplicates, "Send to each number only once");
    CLI::Option* const code =
        command.add_option("--country-code", send_.country_code, "Put this in front of national numbers")
            ->type_name("CODE");
    CLI::Option* const length =
        command.add_option("--national-length", send_.national_length, "Length of a national number")
            ->type_name("N");
    code->needs(length);
    length->needs(code);
  }

  void AddSendMessageKind(CLI::App& command) {
    CLI::Option* const unicode =
        command.add_flag("--unicode", send_.unicode, "Send as Unicode whatever the text");
    CLI::Option* const english = command.add_flag("--english", send_.english, "Send as English SMS");
    CLI::Option* const flash =
        command.add_flag("--flash", send_.flash, "Show it at once on the phone, unsaved");
    CLI::Option* const wap =
        command.add_option("--wap", send_.wap_url, "Send as WAP push of this address")->type_name("URL");
    english->excludes(unicode);
    flash->excludes(unicode)->excludes(english);
    wap->excludes(unicode)->excludes(english)->excludes(flash);
    CLI::Option* const grouped =
        command.add_flag("--grouped", send_.grouped, "One message per number: its rows, each on a line");
    command.add_option("--header", send_.header, "First line of a grouped message")
        ->type_name("TEXT")
        ->needs(grouped);
    command.add_option("--footer", send_.footer, "Last line of a grouped message")
        ->type_name("TEXT")
        ->needs(grouped);
  }

  void AddSendSchedule(CLI::App& command) {
    CLI::Option* const schedule =
        command.add_option("--schedule", send_.schedule, "Send at \"YYYY-MM-DD HH:MM\", local time")
            ->type_name("TIME");
    command.add_option("--title", send_.title, "Title of the scheduled job")
        ->type_name("TEXT")
        ->needs(schedule);
    command
        .add_option("--schedule-column", send_.schedule_column,
                    "Column that holds each row's own date and time")
        ->type_name("COLUMN")
        ->needs(schedule);
    command.add_flag("--notify", send_.notify, "Let the gateway tell you when it has been sent")
        ->needs(schedule);
  }

  void AddSendEmail(CLI::App& command) {
    command.add_option("--email-column", send_.email_column, "Send a copy to the address in this column")
        ->type_name("COLUMN");
    command.add_option("--email-subject", send_.email_subject, "Subject of the copies")->type_name("TEXT");
    command
        .add_option("--from-email", send_.from_email,
                    "Send the copies from this account; its password is in QUORVEL_EMAIL_PASSWORD")
        ->type_name("ADDRESS");
  }

  void AddAccount() {
    Add("balance", "Show the credit balance", balance_);
    Add("modes", "Download the list of submission modes", modes_);
  }

  void AddProxy() {
    CLI::App& command = Add("proxy", "Show or choose how the gateway is reached", proxy_);
    CLI::Option* const type =
        command
            .add_option("--type", proxy_.type,
                        "registry: the system's proxy settings; direct: no proxy; named: the one given here")
            ->check(CLI::IsMember({"registry", "direct", "named"}));
    command.add_option("--host", proxy_.host, "Proxy host")->type_name("HOST")->needs(type);
    command.add_option("--port", proxy_.port, "Proxy port, at most 32767")->type_name("PORT")->needs(type);
    command.add_option("--user", proxy_.user, "Proxy user; the password is in QUORVEL_PROXY_PASSWORD")
        ->type_name("NAME")
        ->needs(type);
  }

  void AddTemplates() {
    CLI::App& command = Add("templates", "List, save or delete message templates", templates_);
    command.require_subcommand(1);
    CLI::App* const list = command.add_subcommand("list", "List the names and texts");
    CLI::App* const save = command.add_subcommand("save", "Save a message under a name");
    CLI::App* const drop = command.add_subcommand("delete", "Delete the message of a name");
    AddMessage(*save, templates_.message, "The message to save");
    save->callback([this] { Require(templates_.message); });
    for (CLI::App* const named : {save, drop}) {
      named->add_option("name", templates_.name, "Name of the template")->required()->type_name("NAME");
    }
    using Action = TemplatesOptions::Action;
    for (const auto& [action, chosen] :
         {std::pair(list, Action::kList), {save, Action::kSave}, {drop, Action::kDelete}}) {
      action->parse_complete_callback([this, choice = chosen] { templates_.action = choice; });
    }
    Add("senders", "List the sender IDs of the account", senders_);
  }

  void AddReports() {
    CLI::App& command = Add("reports", "Fetch delivery reports into a new sheet", reports_);
    command
        .add_option("workbook", reports_.workbook, "CSV file that the sheet is added to; it is not changed")
        ->required()
        ->type_name("WORKBOOK");
    command.add_option("--from", reports_.from, "First day, YYYY-MM-DD")->required()->type_name("DATE");
    command.add_option("--to", reports_.to, "Last day, YYYY-MM-DD")->required()->type_name("DATE");
    command.add_option("--mode", reports_.mode, "Letter of a submission mode, or ALL")
        ->required()
        ->type_name("LETTER");
    command.add_option("--sheet", reports_.sheet, "Name of the new sheet")->required()->type_name("NAME");
    command
        .add_option("--output", reports_.output,
                    "Write the sheet to this CSV file instead of standard output")
        ->type_name("FILE");
  }

  void AddInspection() {
    Add("settings", "List the settings that are stored, passwords masked", settings_);
    Add("menu", "Show the toolbar and the menu", menu_);
  }

  Options& options_;
  SendOptions send_;
  BalanceOptions balance_;
  ModesOptions modes_;
  ProxyOptions proxy_;
  TemplatesOptions templates_;
  SendersOptions senders_;
  ReportsOptions reports_;
  SettingsOptions settings_;
  MenuOptions menu_;
  CLI::App app_{kAbout, "quorvel"};
};

}  // namespace

std::variant<Options, ExitStatus> ParseOptions(int argc, const char* const* argv) {
  Options options;
  Parser parser(options);
  if (const auto end = parser.Parse(argc, argv)) return *end;
  return options;
}

}  // namespace quorvel
