#include <array>

#include "hosts/console/commands.h"
#include "hosts/console/message_text.h"
#include "hosts/console/user.h"
#include "preview/frmPreviewSMS.h"
#include "send/frmSendSMS.h"

namespace quorvel {

namespace {

// Fills the send form as the options say.
class SendFiller {
 public:
  SendFiller(ConsoleHost& host, const SendOptions& options, frmSendSMS& form)
      : host_(host), options_(options), form_(form) {}

  // False when the message is a template that the gateway did not give.
  [[nodiscard]] bool Fill(const MessageText& message) {
    Pick(form_.cmbMobileNumbersCell, ColumnName(options_.column), "--to");
    FillCountryCode();
    FillRows();
    if (!FillMessage(message)) return false;
    FillService();
    // Whatever the gateway offers: a sender ID is typed as it is.
    if (options_.sender) form_.Combo_SenderID.set_text(FromUtf8(*options_.sender));
    FillEmail();
    FillFilter();
    FillSettings();
    FillSchedule();
    Tick(form_.ChkPreview, options_.preview);
    return true;
  }

 private:
  void FillCountryCode() {
    if (!options_.country_code) return;
    Tick(form_.chkAddCountryCode);
    Type(form_.txtCountryCode, FromUtf8(*options_.country_code));
    Pick(form_.ComboCountryCodeLength, FromUtf8(*options_.national_length), "--national-length");
  }

  void FillRows() {
    if (options_.rows) {
      Choose(form_.optRows);
      Type(form_.txtRows, FromUtf8(*options_.rows));
    } else if (options_.start || options_.end) {
      Choose(form_.optRowRange);
      Type(form_.txtStartRow, FromUtf8(options_.start.value_or("")));
      Type(form_.txtEndRow, FromUtf8(options_.end.value_or("")));
    }
  }

  bool FillMessage(const MessageText& message) {
    if (!message.is_template) {
      Type(form_.txtMsg_RTB, message.text);
      return true;
    }
    Press(form_.cmdTemplatesPanel);
    Press(form_.btn_getTemplates);
    if (!host_.connect().session().LoggedIn || !host_.GatewayAnswered()) return false;
    Pick(form_.combo_display_MsgNames, message.text, "--message");
    return true;
  }

  void FillService() {
    if (options_.unicode) Tick(form_.ChkBox_LanguageSMS);
    if (options_.english) Tick(form_.ChkBox_EnglishSMS);
    if (options_.flash) Tick(form_.chkFlash);
    if (options_.wap_url) {
      Tick(form_.ChkBox_WAPPush);
      Type(form_.txtWAP_URL, FromUtf8(*options_.wap_url));
    }
  }

  void FillEmail() {
    if (!options_.email_column && !options_.email_subject && !options_.from_email) return;
    Press(form_.cmdEmailPanel);
    Tick(form_.Chk_SendEmail);
    Type(form_.txtEmailSubject, FromUtf8(options_.email_subject.value_or("")));
    if (options_.email_column)
      Pick(form_.Combo_EmailColumn, ColumnName(*options_.email_column), "--email-column");
    if (!options_.from_email) return;
    Tick(form_.Chk_FastProcessing);
    Type(form_.txt_FromEmailID, FromUtf8(*options_.from_email));
    Type(form_.txt_FromEmailPwd, FromUtf8(host_.environment().email_password.value_or("")));
  }

  void FillFilter() {
    if (!options_.filter) return;
    Press(form_.cmdSearchPanel);
    host_.forms().AnswerInput(FromUtf8(*options_.filter));
    Press(form_.cmdFilter);
  }

  // The options decide, not what was kept of an earlier send.
  void FillSettings() {
    Press(form_.cmdSettingsPanel);
    Tick(form_.Check_RemoveDuplicates, options_.ignore_duplicates);
    if (!options_.grouped) return;
    Tick(form_.chkAdvance);
    Type(form_.txt_header, FromUtf8(options_.header));
    Type(form_.txt_footer, FromUtf8(options_.footer));
  }

  void FillSchedule() {
    if (!options_.schedule) return;
    const std::string& moment = *options_.schedule;
    Press(form_.cmdSchedulerPanel);
    Tick(form_.chkSetScheduler);
    Type(form_.txt_SchedulerName, FromUtf8(options_.title));
    Type(form_.combo_year, FromUtf8(moment.substr(0, 4)));
    Type(form_.combo_month, FromUtf8(moment.substr(5, 2)));
    Type(form_.combo_dd, FromUtf8(moment.substr(8, 2)));
    Type(form_.combo_Times, FromUtf8(moment.substr(11)));
    if (options_.schedule_column) {
      Pick(form_.cmbSchedulerDateTime, ColumnName(*options_.schedule_column), "--schedule-column");
    }
    Tick(form_.chkNotifyMe, options_.notify);
  }

  ConsoleHost& host_;
  const SendOptions& options_;
  frmSendSMS& form_;
};

// Prints the message on show as the preview shows it; the same for the JSON object.
nlohmann::json PrintPreviewed(const frmPreviewSMS& form, Output& output) {
  const std::string number = ToUtf8(form.txt_mno.text());
  const std::string text = ToUtf8(form.txt_msg.text());
  const std::string characters = ToUtf8(form.txt_char_count.text());
  const std::string count = ToUtf8(form.txt_sms_count.text());
  output.Print({ToUtf8(form.label_SMSCount.caption()), "  ", number, "  characters: ", characters,
                "  SMS: ", count, "\n", text, "\n\n"});
  return {{"number", number}, {"text", text}, {"characters", characters}, {"sms", count}};
}

// Prints every message of a preview, then asks; nothing is asked when nothing would be sent.
void PlayPreview(ConsoleHost& host, frmPreviewSMS& form, bool dry_run) {
  Output& output = host.output();
  nlohmann::json messages = nlohmann::json::array({PrintPreviewed(form, output)});
  while (form.cmdNext.usable()) {
    Press(form.cmdNext);
    messages.push_back(PrintPreviewed(form, output));
  }
  const std::string total = ToUtf8(form.label_Total_SMSs.caption());
  output.Print({"Total number of SMS charged: ", total, "\n"});
  output.result()["preview"] = {{"messages", std::move(messages)}, {"total", total}};
  const bool approved = dry_run || host.forms().Confirm(u"SMS", u"Send?");
  Press(approved ? form.cmdContinueSMS : form.cmdCancel);
}

struct OutcomeName {
  SendOutcome outcome;
  const char* name;
  ExitStatus status;
};

constexpr std::array kOutcomeNames = {
    OutcomeName{SendOutcome::kAccepted, "accepted", ExitStatus::kDone},
    OutcomeName{SendOutcome::kRefused, "refused", ExitStatus::kRefused},
    OutcomeName{SendOutcome::kNotSent, "not sent", ExitStatus::kRefused},
    OutcomeName{SendOutcome::kCancelled, "cancelled", ExitStatus::kCancelled},
    OutcomeName{SendOutcome::kUnknown, "unknown", ExitStatus::kRefused}};

// How the send ended, as printed.
ExitStatus PrintOutcome(ConsoleHost& host, SendOutcome outcome) {
  for (const OutcomeName& known : kOutcomeNames) {
    if (known.outcome != outcome) continue;
    host.output().Print({known.name, "\n"});
    host.output().result()["outcome"] = known.name;
    const bool nobody_answered = outcome == SendOutcome::kNotSent && host.forms().unanswered();
    return nobody_answered ? ExitStatus::kCancelled : known.status;
  }
  throw std::logic_error("an unknown outcome");
}

// "YYYY-MM-DD HH:MM"; whether there is such a moment is for the form to say.
void CheckMoment(const std::string& moment) {
  constexpr std::string_view kShape = "0000-00-00 00:00";
  bool fits = moment.size() == kShape.size();
  for (std::size_t i = 0; fits && i < kShape.size(); ++i) {
    fits = kShape[i] == '0' ? moment[i] >= '0' && moment[i] <= '9' : moment[i] == kShape[i];
  }
  if (!fits) throw UsageError("--schedule: \"" + moment + "\" is not of the form \"YYYY-MM-DD HH:MM\"");
}

}  // namespace

ExitStatus RunSend(ConsoleHost& host, const SendOptions& options, TextView user) {
  const MessageText message = ReadMessage(options.message);
  if (message.is_template && options.dry_run) {
    throw UsageError("--message: a stored template is kept at the gateway, which --dry-run does not ask");
  }
  if (options.schedule) CheckMoment(*options.schedule);
  if (!host.OpenWorkbook(options.workbook)) return ExitStatus::kBadWorkbook;

  SendOutcome outcome = SendOutcome::kNotSent;
  host.forms().On<frmPreviewSMS>([&](frmPreviewSMS& form) { PlayPreview(host, form, options.dry_run); });
  host.forms().On<frmSendSMS>([&](frmSendSMS& form) {
    if (SendFiller(host, options, form).Fill(message)) {
      Press(form.cmdSend);
      outcome = form.outcome();
    }
    Press(form.cmdClose);
  });
  if (options.dry_run) host.connect().BeginSession(user);
  host.connect().SendSms();
  if (host.composed()) return ExitStatus::kDone;
  return PrintOutcome(host, outcome);
}

}  // namespace quorvel
