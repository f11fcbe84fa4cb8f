#include "account/frmLogin.h"
#include "addin/common/alert.h"
#include "platform/numbers.h"
#include "send/frmSendSMS.h"
#include "send/hex_text.h"
#include "send/send_procedures.h"

namespace quorvel {

namespace {

constexpr TextView kTitle = u"SMS";
constexpr TextView kNothingSelected = u"Select";
constexpr std::size_t kShortestTitle = 4;
constexpr int kFirstPlausibleYear = 2011;

Text SelectedOf(const ComboBox& picker) {
  return picker.text() == kNothingSelected ? Text() : picker.text();
}

// Holds a flag up while it lives.
class FlagUp {
 public:
  explicit FlagUp(bool& flag) : flag_(flag) { flag_ = true; }
  FlagUp(const FlagUp&) = delete;
  FlagUp& operator=(const FlagUp&) = delete;
  ~FlagUp() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace

void frmSendSMS::cmdSend_Click() {
  if (sending_) return;  // pressed again while a send lets events run: it would go out twice
  const FlagUp sending(sending_);
  outcome_ = SendOutcome::kNotSent;
  if (!context_.platform.application.ActiveWorkbook()) {
    Alert(u"Work book does not exit. Please check", kTitle);
    return;
  }
  if (!EnsureLoggedIn(context_)) return;
  KeepCountryCode();
  if (!CheckRows() || !CheckEmail() || !CheckMessage() || !PrepareSchedule()) return;
  const SendResult result = Dispatch();
  outcome_ = result.outcome;
  FocusField(result.field);
}

void frmSendSMS::KeepCountryCode() {
  context_.settings.Write(kCountryCodeSetting, txtCountryCode.text());
  context_.settings.Write(kCountryLengthSetting,
                          NumberToText(std::int32_t{ComboCountryCodeLength.list_index()}));
}

bool frmSendSMS::CheckRow(TextBox& box, const RowMessages& messages) {
  const TextView row = Trim(box.text());
  TextView message;
  if (row.empty()) {
    box.set_text(u"");
    message = messages.missing;
  } else if (!IsNumeric(row)) {
    message = messages.not_numeric;
  } else if (ToDouble(row) <= 0) {
    message = messages.not_positive;
  } else {
    return true;
  }
  box.SetFocus();
  Alert(message, kTitle);
  return false;
}

bool frmSendSMS::CheckRows() {
  constexpr RowMessages kStart{u"Please enter start row", u"Start row should be numeric only",
                               u"Start row should be greater than zero"};
  constexpr RowMessages kEnd{u"Please enter end row", u"End row should be numeric only",
                             u"End row should be greater than zero"};
  if (!optRowRange.value()) return true;
  if (!CheckRow(txtStartRow, kStart) || !CheckRow(txtEndRow, kEnd)) return false;
  if (ToLong(Trim(txtStartRow.text())) <= ToLong(Trim(txtEndRow.text()))) return true;
  txtEndRow.SetFocus();
  Alert(u"End row should be greater than Start row", kTitle);
  return false;
}

bool frmSendSMS::CheckEmail() {
  constexpr TextView kEmailTitle = u"SMS + Email";
  if (!Chk_SendEmail.value()) return true;
  if (txtEmailSubject.text().empty()) {
    Alert(u"Please enter Email Subject", kEmailTitle);
    ShowPanel(Frame_Email);
    txtEmailSubject.SetFocus();
    return false;
  }
  if (Combo_EmailColumn.text() == kNothingSelected) {
    Alert(u"Please Select Email Address Column", kEmailTitle);
    ShowPanel(Frame_Email);
    Combo_EmailColumn.SetFocus();
    return false;
  }
  email_column_ = Combo_EmailColumn.text();
  return true;
}

bool frmSendSMS::CheckMessage() {
  if (!Trim(txtMsg_RTB.text()).empty()) return true;
  txtMsg_RTB.set_text(u"");
  txtMsg_RTB.SetFocus();
  Alert(u"Please enter message", kTitle);
  return false;
}

bool frmSendSMS::PrepareSchedule() {
  if (!chkSetScheduler.value() || !scheduler_enabled_) return true;
  scheduler_title_.clear();
  if (txt_SchedulerName.text().size() < kShortestTitle) {
    Alert(u"Scheduler Title Should Have Minimum 6 Characters.", u"S M S Scheduler");
    ShowPanel(frame_Scheduler_Details);
    txt_SchedulerName.SetFocus();
    return false;
  }
  const Date now = context_.platform.clock.Now();
  if (Parts(now).year < kFirstPlausibleYear) {
    Alert(u"Please Correct Your System Clock And Submit Again.", u"SMS Scheduler");
    return false;
  }
  Date moment;
  if (!CheckScheduledMoment(now, moment)) return false;
  const std::int32_t minutes = MinutesBetween(now, moment);
  minutes_ = NumberToText(minutes);
  const Text question = u"Are You Sure You Want To Set Scheculer On '" +
                        FormatDate(AddMinutes(now, minutes), u"dddd dd mmmm yyyy hh:mm AM/PM") + u"'";
  if (forms().MsgBox(question, kYesNo | kInformation, kTitle) != Answer::kYes) {
    outcome_ = SendOutcome::kCancelled;
    return false;
  }
  scheduler_title_ = txt_SchedulerName.text();
  return true;
}

bool frmSendSMS::CheckScheduledMoment(Date now, Date& moment) {
  const Text chosen =
      combo_month.text() + u"/" + combo_dd.text() + u"/" + combo_year.text() + u" " + combo_Times.text();
  const std::optional<Date> date = ParseDate(chosen, now);
  if (date && *date > now) {
    moment = *date;
    return true;
  }
  Alert(u"Please Select Date & Time Greater Than '" + FormatDate(now, u"dd mmmm yyyy hh:mm AM/PM") + u"'",
        kTitle);
  const DateParts today = Parts(now);
  combo_year.set_text(NumberToText(std::int32_t{today.year}));
  combo_month.set_text(NumberToText(std::int32_t{today.month}));
  return false;
}

SendResult frmSendSMS::Dispatch() {
  preview_.UnicodeMode = false;
  if (!filter_.empty()) return SendFilterSMS(context_, preview_, ReadChoices(), filter_);
  const bool needs_unicode = IsUnicode(forms(), txtMsg_RTB.text());
  if (!needs_unicode && !ChkBox_LanguageSMS.value()) return SendSMS(context_, preview_, ReadChoices());
  preview_.UnicodeMode = true;
  ChkBox_LanguageSMS.set_value(true);
  return SendSMS_Unicode(context_, preview_, ReadChoices());
}

RowChoice frmSendSMS::ReadRows() const {
  if (optRowRange.value()) return {RowChoice::Kind::kStartToEnd, txtStartRow.text(), txtEndRow.text(), {}};
  if (optRows.value()) return {RowChoice::Kind::kList, {}, {}, txtRows.text()};
  return {};
}

SendChoices frmSendSMS::ReadChoices() const {
  SendChoices choices;
  choices.message = txtMsg_RTB.text();
  choices.number_column = cmbMobileNumbersCell.text();
  choices.rows = ReadRows();
  choices.country_code = {chkAddCountryCode.value(), txtCountryCode.text(),
                          static_cast<std::size_t>(std::max(0, ComboCountryCodeLength.list_index()))};
  choices.ignore_duplicates = Check_RemoveDuplicates.value();
  choices.preview = ChkPreview.value();
  choices.service = ChkBox_EnglishSMS.value() ? Service::kEnglish
                    : ChkBox_WAPPush.value()  ? Service::kWapPush
                    : chkFlash.value()        ? Service::kFlash
                                              : Service::kNone;
  choices.wap_url = txtWAP_URL.text();
  choices.sender = Combo_SenderID.text();
  choices.email = {Chk_SendEmail.value(), email_column_, txtEmailSubject.text(), txt_FromEmailID.text(),
                   txt_FromEmailPwd.text()};
  choices.schedule = {chkSetScheduler.value(), scheduler_title_, minutes_, SelectedOf(cmbSchedulerDateTime),
                      chkNotifyMe.value()};
  choices.grouping = {chkAdvance.value(), txt_header.text(), txt_footer.text()};
  return choices;
}

void frmSendSMS::FocusField(SendField field) {
  if (field == SendField::kRows) txtRows.SetFocus();
  if (field == SendField::kNumberColumn) cmbMobileNumbersCell.SetFocus();
}

}  // namespace quorvel
