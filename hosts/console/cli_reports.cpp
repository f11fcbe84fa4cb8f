#include <fstream>
#include <sstream>

#include "hosts/console/commands.h"
#include "hosts/console/csv.h"
#include "hosts/console/user.h"
#include "platform/numbers.h"
#include "reports/frmDR.h"

namespace quorvel {

namespace {

struct Day {
  int year = 0;
  int month = 0;
  int day = 0;
};

// "YYYY-MM-DD", an existing day.
Day ReadDay(const std::string& date, const char* option) {
  constexpr std::string_view kShape = "0000-00-00";
  bool fits = date.size() == kShape.size();
  for (std::size_t i = 0; fits && i < kShape.size(); ++i) {
    fits = kShape[i] == '0' ? date[i] >= '0' && date[i] <= '9' : date[i] == '-';
  }
  const auto part = [&](std::size_t at, std::size_t size) { return ToLong(FromUtf8(date.substr(at, size))); };
  const Day day = fits ? Day{part(0, 4), part(5, 2), part(8, 2)} : Day{};
  const auto known = MakeDate({.year = day.year, .month = day.month, .day = day.day, .hour = 0});
  if (!known) throw UsageError(std::string(option) + ": \"" + date + "\" is no day of the form YYYY-MM-DD");
  return day;
}

struct DayPickers {
  ComboBox& day;
  ComboBox& month;
  ComboBox& year;
};

// The year first: the lists offer the days of the month that is chosen.
void PickDay(const DayPickers& pickers, const Day& day, const char* option) {
  Pick(pickers.year, NumberToText(std::int32_t{day.year}), option);
  pickers.month.UserSelect(day.month - 1);
  Pick(pickers.day, NumberToText(std::int32_t{day.day}), option);
}

// Chooses the mode of that letter, or all of them. Throws UsageError with the letters on offer.
void PickMode(ComboBox& modes, const std::string& mode) {
  const Text letter = UpperCase(FromUtf8(mode));
  std::string offered;
  for (int index = 0; index < modes.list_count(); ++index) {
    const std::int32_t code = modes.item_data(index);
    const Text name = code > 0 ? Text(1, static_cast<char16_t>(code)) : Text(u"ALL");
    if (name == letter) return modes.UserSelect(index);
    offered += (offered.empty() ? "" : ", ") + ToUtf8(name);
  }
  throw UsageError("--mode: \"" + mode + "\" is none of " + offered);
}

nlohmann::json Table(MemorySheet& sheet) {
  nlohmann::json rows = nlohmann::json::array();
  for (std::int32_t row = 1; row <= sheet.UsedRows(); ++row) {
    nlohmann::json& cells = rows.emplace_back(nlohmann::json::array());
    for (std::int32_t column = 1; column <= sheet.UsedColumns(); ++column) {
      cells.push_back(ToUtf8(sheet.CellText({ColumnLetters(column), row})));
    }
  }
  return rows;
}

// Prints the new sheet, or writes it to the file that was asked for; whether that worked.
bool Deliver(MemorySheet& sheet, const ReportsOptions& options, Output& output) {
  output.result()["sheet"] = ToUtf8(sheet.name());
  output.result()["rows"] = Table(sheet);
  if (!options.output) {
    std::ostringstream csv;
    WriteCsv(sheet, csv);
    output.Print({csv.str()});
    return true;
  }
  std::ofstream file(*options.output, std::ios::binary | std::ios::trunc);
  WriteCsv(sheet, file);
  file.close();
  if (!file) output.Complain("--output: " + *options.output + " cannot be written");
  return !file.fail();
}

}  // namespace

ExitStatus RunReports(ConsoleHost& host, const ReportsOptions& options) {
  const Day from = ReadDay(options.from, "--from");
  const Day to = ReadDay(options.to, "--to");
  if (!host.OpenWorkbook(options.workbook)) return ExitStatus::kBadWorkbook;
  MemoryWorkbook& workbook = *host.application().workbook();

  ReportOutcome outcome = ReportOutcome::kNotFetched;
  host.forms().On<frmDR>([&](frmDR& form) {
    Type(form.txtSheetName, FromUtf8(options.sheet));
    PickMode(form.cmbMode, options.mode);
    PickDay({form.cmbFromDateDay, form.cmbFromDateMonth, form.cmbFromDateYear}, from, "--from");
    PickDay({form.cmbToDateDay, form.cmbTodateMonth, form.cmbToDateYear}, to, "--to");
    Press(form.cmdGet);
    outcome = form.outcome();
    Press(form.cmdCancel);
  });
  host.connect().DeliveryReport();
  bool done = outcome == ReportOutcome::kWritten || outcome == ReportOutcome::kNone;
  const bool added = workbook.SheetNames().size() > 1;
  if (added) done = Deliver(workbook.active(), options, host.output()) && done;
  return host.StatusOf(done);
}

}  // namespace quorvel
