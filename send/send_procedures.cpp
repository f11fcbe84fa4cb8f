#include "send/send_procedures.h"

#include <algorithm>
#include <optional>

#include "account/frmLogin.h"
#include "addin/common/alert.h"
#include "platform/runtime_error.h"
#include "preview/frmPreviewSMS.h"
#include "send/composition.h"
#include "send/filter.h"
#include "send/submission.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u" S M S ";

// What one send works with.
struct Send {
  const AddInContext& context;
  PreviewState& preview;
  const SendChoices& choices;
  const SendRules& rules;
  bool filtered = false;
};

void ShowStop(const Send& send, TextView message, int style, TextView title) {
  send.context.progress.Close();
  ShowAlert(send.context.platform.forms, message, style, title);
}

std::unique_ptr<Sheet> ActiveSheet(const Send& send) {
  const std::unique_ptr<Workbook> workbook = send.context.platform.application.ActiveWorkbook();
  if (!workbook) throw ObjectNotSet();
  return workbook->ActiveSheet();
}

// The walk over all rows passes over row 1 when its number cell holds no digit.
bool IsHeading(const SendChoices& choices, Sheet& sheet) {
  if (choices.rows.kind != RowChoice::Kind::kAll) return false;
  const CellValue value = sheet.Value({choices.number_column, 1});
  if (std::holds_alternative<CellError>(value)) return false;
  const Text text = ToText(value);
  return std::none_of(text.begin(), text.end(), [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
}

// The rows of the send; nothing when the row list is at fault, which the user was told.
std::optional<std::vector<std::int32_t>> ChosenRows(const Send& send, Sheet& sheet) {
  SelectedRows selected = SelectRows(send.choices.rows, sheet.UsedRows());
  switch (selected.fault) {
    case SelectedRows::Fault::kNone:
      if (IsHeading(send.choices, sheet)) selected.rows.erase(selected.rows.begin());
      return std::move(selected.rows);
    case SelectedRows::Fault::kBadFormat:
      ShowStop(send, u"Invalid format in row range of rows", kCritical, kTitle);
      return std::nullopt;
    case SelectedRows::Fault::kBadFirstRow:
      ShowStop(send, u"Invalid format at first row", kCritical, kTitle);
      return std::nullopt;
  }
  return std::nullopt;
}

// Says why there is nothing to send to.
void ShowNoNumbers(const Send& send, bool any_row) {
  const bool column_counts = send.rules.layout == Layout::kUnicode || send.filtered;
  if (!column_counts) {
    ShowStop(send, u"0 SMS Messages Sent\r\nThere are no Mobilenumbers available in specified colum.",
             kInformation, kTitle);
  } else if (any_row) {
    ShowStop(send, u"Invalid mobile number in column of " + send.choices.number_column, kInformation,
             send.filtered ? TextView(u"SMS Alert") : TextView(u"S M S"));
  } else {
    ShowStop(send, u"There Is No Mobile Number In Specified Range.", kInformation, kTitle);
  }
}

// From the rows to the gateway's answer.
SendResult SendRows(const Send& send, Sheet& sheet, const std::vector<std::int32_t>& rows) {
  Composer composer(send.context, send.preview, send.choices, send.rules, sheet);
  if (const auto stopped = composer.Walk(rows)) return {*stopped, SendField::kNone};
  if (composer.composition().numbers.empty()) {
    ShowNoNumbers(send, !rows.empty());
    return {SendOutcome::kNotSent, SendField::kNumberColumn};
  }
  if (send.choices.preview && !ApprovePreview(send.context.platform.forms, send.preview)) {
    return {SendOutcome::kCancelled, SendField::kNone};
  }
  return {Submit(send.context, send.choices, send.rules, composer.composition()), SendField::kNone};
}

// The steps that every send begins with; with a formula only the rows that satisfy it are sent.
SendResult Begin(const Send& send, std::optional<TextView> formula) {
  if (!EnsureLoggedIn(send.context)) return {};
  const ProgressCloser progress_closer(send.context.progress);
  if (send.choices.number_column.empty()) {
    ShowNoNumbers(send, true);
    return {SendOutcome::kNotSent, SendField::kNumberColumn};
  }
  const std::unique_ptr<Sheet> sheet = ActiveSheet(send);
  const auto rows = ChosenRows(send, *sheet);
  if (!rows) return {SendOutcome::kNotSent, SendField::kRows};
  if (!formula) return SendRows(send, *sheet, *rows);

  const FilteredRows filtered = FilterRows(send.context, send.choices, *formula, *sheet, *rows);
  if (filtered.rows.empty()) return {filtered.outcome, SendField::kNone};
  return SendRows(send, *sheet, filtered.rows);
}

}  // namespace

SendResult SendSMS(const AddInContext& context, PreviewState& preview, const SendChoices& choices) {
  const Layout layout = choices.grouping.wanted ? Layout::kRecords : Layout::kStandard;
  return Begin({context, preview, choices, RulesOf(layout)}, std::nullopt);
}

SendResult SendSMS_Unicode(const AddInContext& context, PreviewState& preview, const SendChoices& choices) {
  return Begin({context, preview, choices, RulesOf(Layout::kUnicode)}, std::nullopt);
}

SendResult SendFilterSMS(const AddInContext& context, PreviewState& preview, const SendChoices& choices,
                         TextView formula) {
  return Begin({context, preview, choices, RulesOf(Layout::kRecords), true}, formula);
}

}  // namespace quorvel
