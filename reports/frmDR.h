#pragma once

#include <optional>

#include "account/context.h"
#include "platform/form.h"
#include "platform/workbook.h"

namespace quorvel {

// What became of the last press of cmdGet, for scripts.
enum class ReportOutcome {
  kNotFetched,  // no report, or not the whole of it: a check, no answer, a cut answer, a host's error,
                // cancelled
  kRefused,     // by the gateway
  kWritten,     // the new sheet holds it, as far as the sheet has rows
  kNone         // there is nothing to report
};

// Fetches the account's delivery reports of some days and writes them into a new sheet.
class frmDR : public Form {
 public:
  explicit frmDR(const AddInContext& context);

  Label lblSheetName{*this, "lblSheetName", {10, 12, 62, 10}, u"New &sheet name"};
  TextBox txtSheetName{*this, "txtSheetName", {76, 8, 150, 16}};
  Label lblMode{*this, "lblMode", {10, 34, 62, 10}, u"Sent &through"};
  ComboBox cmbMode{*this, "cmbMode", {76, 30, 150, 16}};
  Label lblDay{*this, "lblDay", {76, 54, 36, 10}, u"Day"};
  Label lblMonth{*this, "lblMonth", {116, 54, 62, 10}, u"Month"};
  Label lblYear{*this, "lblYear", {182, 54, 44, 10}, u"Year"};
  Label lblFromDate{*this, "lblFromDate", {10, 70, 62, 10}, u"&From date"};
  ComboBox cmbFromDateDay{*this, "cmbFromDateDay", {76, 66, 36, 16}};
  ComboBox cmbFromDateMonth{*this, "cmbFromDateMonth", {116, 66, 62, 16}};
  ComboBox cmbFromDateYear{*this, "cmbFromDateYear", {182, 66, 44, 16}};
  Label lblToDate{*this, "lblToDate", {10, 92, 62, 10}, u"T&o date"};
  ComboBox cmbToDateDay{*this, "cmbToDateDay", {76, 88, 36, 16}};
  ComboBox cmbTodateMonth{*this, "cmbTodateMonth", {116, 88, 62, 16}};
  ComboBox cmbToDateYear{*this, "cmbToDateYear", {182, 88, 44, 16}};
  Button cmdGet{*this, "cmdGet", {106, 114, 57, 18}, u"&Get", Button::Role::kDefault};
  Button cmdCancel{*this, "cmdCancel", {169, 114, 57, 18}, u"Close", Button::Role::kCancel};

  [[nodiscard]] ReportOutcome outcome() const { return outcome_; }

 protected:
  void Form_Load() override;

 private:
  // The three lists of one date. The position in a month list is the month.
  struct DateLists {
    ComboBox& day;
    ComboBox& month;
    ComboBox& year;
  };

  struct Query {
    Text sheet;
    Text mode;
    Date from;
    Date to;
  };

  [[nodiscard]] DateLists From() { return {cmbFromDateDay, cmbFromDateMonth, cmbFromDateYear}; }
  [[nodiscard]] DateLists To() { return {cmbToDateDay, cmbTodateMonth, cmbToDateYear}; }
  void LoadModes();
  void LoadDate(const DateLists& lists);
  // The days of the chosen month; the chosen day stays as far as the month has it.
  static void FillDays(const DateLists& lists);
  [[nodiscard]] static Date ReadDate(const DateLists& lists);

  void cmdGet_Click();
  // What the user asks for; nothing after an alert that says what is wrong. `workbook` is null for none.
  std::optional<Query> CheckFields(Workbook* workbook);
  [[nodiscard]] Text SelectedMode() const;
  Text Fetch(const Query& query);
  ReportOutcome Interpret(TextView reply, const Query& query, Workbook& workbook);
  ReportOutcome WriteSheet(TextView payload, const Query& query, Workbook& workbook);
  void Alert(TextView message, int style);

  const AddInContext& context_;
  bool busy_ = false;  // a click is at work, and the host's events run meanwhile
  ReportOutcome outcome_ = ReportOutcome::kNotFetched;
};

}  // namespace quorvel
