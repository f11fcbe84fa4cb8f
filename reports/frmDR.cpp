#include "reports/frmDR.h"

#include <algorithm>
#include <array>

#include "account/frmLogin.h"
#include "addin/common/alert.h"
#include "gateway/endpoints.h"
#include "gateway/replies.h"
#include "platform/numbers.h"
#include "reports/report_dates.h"
#include "reports/report_sheet.h"
#include "reports/report_table.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u"SMS";
constexpr TextView kAllModes = u"ALL";
constexpr TextView kNoRecords = u"0";
constexpr int kFirstYear = 2003;
constexpr int kMonths = 12;
constexpr std::size_t kModeLetterLength = 2;  // with its hyphen

constexpr std::array kReportMessages = {
    CodeMessage{kUnknownUserCode, kInvalidUserName},
    CodeMessage{kWrongPasswordCode, kInvalidPassword},
    CodeMessage{kBadParametersCode, u"Invalid Parameters"},
    CodeMessage{kBlockedCode, kAccountBlocked},
    CodeMessage{kErrorCode, u"Error occured while retrieving delivery report"},
};

// Raises a flag while it lives.
class FlagRaiser {
 public:
  explicit FlagRaiser(bool& flag) : flag_(flag) { flag_ = true; }
  FlagRaiser(const FlagRaiser&) = delete;
  FlagRaiser& operator=(const FlagRaiser&) = delete;
  ~FlagRaiser() { flag_ = false; }

 private:
  bool& flag_;
};

// An envelope that was opened and never closed.
bool IsCut(TextView reply) {
  return reply.starts_with(u"<SMS>") && reply.find(u"</SMS>") == TextView::npos;
}

bool HasSheet(Workbook& workbook, TextView name) {
  const Text wanted = UpperCase(name);
  const std::vector<Text> names = workbook.SheetNames();
  return std::any_of(names.begin(), names.end(),
                     [&](const Text& taken) { return UpperCase(taken) == wanted; });
}

Text Count(std::size_t count) {
  return NumberToText(static_cast<double>(count));
}

}  // namespace

frmDR::frmDR(const AddInContext& context)
    : Form("frmDR", u"SMS - Delivery Reports", 236, 140), context_(context) {
  for (ComboBox* list : {&cmbFromDateMonth, &cmbFromDateYear}) list->on_click = [this] { FillDays(From()); };
  for (ComboBox* list : {&cmbTodateMonth, &cmbToDateYear}) list->on_click = [this] { FillDays(To()); };
  cmdGet.on_click = [this] { RunHandler(context_.platform.forms, [this] { cmdGet_Click(); }); };
  cmdCancel.on_click = [this] { Unload(); };
}

void frmDR::Form_Load() {
  LoadModes();
  LoadDate(From());
  LoadDate(To());
  txtSheetName.SetFocus();
}

void frmDR::LoadModes() {
  for (const Text& mode : Split(context_.settings.Read(kModesSetting), u",")) {
    if (mode.empty()) continue;
    cmbMode.AddItem(TextView(mode).substr(std::min(mode.size(), kModeLetterLength)), mode.front());
  }
  cmbMode.AddItem(kAllModes);
  cmbMode.set_list_index(cmbMode.list_count() - 1);
}

void frmDR::LoadDate(const DateLists& lists) {
  const DateParts today = Parts(context_.platform.clock.Now());
  for (int month = 1; month <= kMonths; ++month) {
    lists.month.AddItem(FormatDate(ReportDate(1, month, kFirstYear), u"mmmm"));
  }
  for (int year = kFirstYear; year <= today.year; ++year) {
    lists.year.AddItem(NumberToText(std::int32_t{year}));
  }
  lists.year.set_list_index(lists.year.list_count() - 1);
  lists.month.set_list_index(today.month - 1);
  lists.day.set_list_index(std::min(today.day, lists.day.list_count()) - 1);
}

void frmDR::FillDays(const DateLists& lists) {
  if (lists.month.list_index() < 0 || lists.year.list_index() < 0) return;
  const int chosen = lists.day.list_index();
  const int days = DaysOfMonth(lists.month.list_index() + 1, ToLong(lists.year.text()));
  lists.day.Clear();
  for (int day = 1; day <= days; ++day) lists.day.AddItem(NumberToText(std::int32_t{day}));
  lists.day.set_list_index(std::clamp(chosen, 0, days - 1));
}

Date frmDR::ReadDate(const DateLists& lists) {
  return ReportDate(ToLong(lists.day.text()), lists.month.list_index() + 1, ToLong(lists.year.text()));
}

void frmDR::cmdGet_Click() {
  if (busy_) return;
  const FlagRaiser busy(busy_);
  outcome_ = ReportOutcome::kNotFetched;
  if (!EnsureLoggedIn(context_)) return;
  const auto workbook = context_.platform.application.ActiveWorkbook();
  const auto query = CheckFields(workbook.get());
  if (query) outcome_ = Interpret(Fetch(*query), *query, *workbook);
}

std::optional<frmDR::Query> frmDR::CheckFields(Workbook* workbook) {
  if (workbook == nullptr) {
    Alert(u"Work book does not exit. Please check", kInformation);
    return std::nullopt;
  }
  const Text& sheet = txtSheetName.text();
  if (sheet.empty()) {
    Alert(u"Sheet name should not be empty", kInformation);
    txtSheetName.SetFocus();
    return std::nullopt;
  }
  if (HasSheet(*workbook, sheet)) {
    Alert(u"Sheet name(" + sheet + u") already exits." + Text(kCrLf) + u"Please choose some other",
          kInformation);
    txtSheetName.SetFocus();
    txtSheetName.SelectAll();
    return std::nullopt;
  }
  Query query{sheet, SelectedMode(), ReadDate(From()), ReadDate(To())};
  if (query.from > query.to) {
    Alert(u"From date should be less than To Date", kInformation);
    cmbFromDateDay.SetFocus();
    return std::nullopt;
  }
  return query;
}

Text frmDR::SelectedMode() const {
  const std::int32_t code = cmbMode.item_data(cmbMode.list_index());
  return code > 0 ? Text(1, static_cast<char16_t>(code)) : Text(kAllModes);
}

Text frmDR::Fetch(const Query& query) {
  Gateway& gateway = context_.gateway;
  const ProgressCloser closer(context_.progress);
  context_.progress.Show(u"Please wait - retrieving Delivery Report");
  const auto date = [&](Date day) { return gateway.Bytes(FormatDate(day, u"yyyymmdd")); };
  return gateway.HttpPostForm(
      kReportsPath, "user=" + gateway.User() + "&passwd=" + gateway.ScrambledPassword() + "&FromDate=" +
                        date(query.from) + "&ToDate=" + date(query.to) + "&TOD=" + gateway.Bytes(query.mode));
}

ReportOutcome frmDR::Interpret(TextView reply, const Query& query, Workbook& workbook) {
  if (reply.empty()) {
    Alert(Text(kNoResponse) + Text(kCrLf) + Text(kCheckConnection), kCritical);
    return ReportOutcome::kNotFetched;
  }
  if (const auto refusal = FindMessage(kReportMessages, reply)) {
    Alert(*refusal, kCritical);
    return ReportOutcome::kRefused;
  }
  const Text payload = WithoutTags(reply);
  ReportOutcome outcome = ReportOutcome::kNone;
  if (payload == kNoRecords) {
    Alert(u"No Records Found", kInformation);
  } else if (payload.empty()) {
    Alert(u"No Report Found For The Specified Date!!!", kInformation);
  } else {
    outcome = WriteSheet(payload, query, workbook);
  }
  if (!IsCut(reply)) return outcome;
  Alert(u"The connection broke off. The report is incomplete. Please get it again.", kWarning);
  return ReportOutcome::kNotFetched;
}

ReportOutcome frmDR::WriteSheet(TextView payload, const Query& query, Workbook& workbook) {
  Progress& progress = context_.progress;
  const ReportTable table = ParseReport(payload);
  const Text escaped_comma = context_.platform.code_page.Decode("\x80");
  const auto sheet = workbook.AddSheet(query.sheet);
  std::size_t written = 0;
  progress.CancelRequested = false;
  {
    const ProgressCloser closer(progress);
    written = WriteReport(table, escaped_comma.front(), *sheet, progress);
  }
  const std::size_t count = table.records.size();
  if (written == count) return ReportOutcome::kWritten;
  Alert(Count(count - written) + u" of " + Count(count) +
            (progress.CancelRequested ? u" records were left out because you cancelled."
                                      : u" records were left out because the sheet has no more rows."),
        kWarning);
  return progress.CancelRequested ? ReportOutcome::kNotFetched : ReportOutcome::kWritten;
}

void frmDR::Alert(TextView message, int style) {
  ShowAlert(context_.platform.forms, message, style, kTitle);
}

}  // namespace quorvel
