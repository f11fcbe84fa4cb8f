#include "send/submission.h"

#include <array>
#include <utility>

#include "addin/common/alert.h"
#include "gateway/endpoints.h"
#include "gateway/replies.h"
#include "platform/numbers.h"
#include "send/hex_text.h"

namespace quorvel {

namespace {

constexpr std::size_t kManyNumbers =
    1001;  // above: "<" and ">" are escaped, and other pages take the records
constexpr std::int32_t kManyScheduled = 700;  // above: another page takes the schedule

// Builds the body of one submission, parameter by parameter.
class BodyBuilder {
 public:
  BodyBuilder(Gateway& gateway, const SendChoices& choices, Layout layout, Composition& composition)
      : gateway_(gateway),
        choices_(choices),
        layout_(layout),
        composition_(composition),
        many_(composition.numbers.parts() > kManyNumbers) {}

  [[nodiscard]] std::string Build() {
    const std::string message = Message();
    body_ = "mobilenumber=" + gateway_.Bytes(composition_.numbers.joined());
    body_.reserve(body_.size() + composition_.cell_data.size() + message.size() + kTailReserve);
    body_ += "&message=" + message;
    body_ += "&MMCellData=";
    body_ += std::exchange(composition_.cell_data, {});
    Account();
    if (layout_ == Layout::kUnicode) {
      body_ += "&ver=1.2&isUnicodeSubmit=1&TOS=44";
      body_ += "&SenderName=" + gateway_.UrlEncode(Trim(choices_.sender));
    } else {
      body_ += "&ver=1.0&SenderName=" + gateway_.UrlEncode(Trim(choices_.sender));
      body_ += composition_.long_consent ? "&IsConcatSMS=1" : "&IsConcatSMS=0";
      TypeOfService();
    }
    Email();
    if (layout_ != Layout::kUnicode) AddSchedule();
    return std::move(body_);
  }

 private:
  static constexpr std::size_t kTailReserve = 1024;

  [[nodiscard]] std::string Message() {
    if (layout_ == Layout::kUnicode) return gateway_.UrlEncode(conStringToHex(composition_.message));
    if (!many_) return gateway_.UrlEncode(composition_.message);
    return gateway_.UrlEncode(Replace(Replace(composition_.message, u"<", u"|SMSC_LT|"), u">", u"|SMSC_GT|"));
  }

  void Account() {
    body_ += "&user=" + (layout_ == Layout::kUnicode ? gateway_.EncodedUser() : gateway_.User());
    body_ +=
        "&passwd=" + (layout_ == Layout::kRecords ? gateway_.ScrambledPassword() : gateway_.PlainPassword());
  }

  void TypeOfService() {
    if (choices_.service == Service::kWapPush) {
      body_ += "&TOS=31";
      body_ += "&WAP_URL=" + gateway_.UrlEncode(choices_.wap_url);
    } else if (layout_ == Layout::kRecords) {
      body_ += choices_.service == Service::kFlash ? "&TOS=FLASH" : "&TOS=N";
    } else if (choices_.service == Service::kEnglish) {
      body_ += "&TOS=11";
    } else if (choices_.service == Service::kFlash) {
      body_ += "&TOS=46";
    }
  }

  void Email() {
    const EmailCopy& email = choices_.email;
    if (!email.wanted) return;
    body_ += "&sendEmail=1";
    body_ += "&EmailSubject=" +
             gateway_.UrlEncode(layout_ == Layout::kUnicode ? conStringToHex(email.subject) : email.subject);
    body_ += "&EmailAdresses=" + gateway_.UrlEncode(composition_.emails);
    body_ += "&FromEmailID=" + gateway_.UrlEncode(email.from);
    body_ += "&FromEmailPwd=" + gateway_.UrlEncode(email.password);
  }

  void AddSchedule() {
    const Schedule& schedule = choices_.schedule;
    if (!schedule.wanted) return;
    const Text& minutes = schedule.date_column.empty() ? schedule.minutes : composition_.minutes;
    body_ += "&schedulerName=" + gateway_.UrlEncode(WithoutLeadingComma(schedule.title));
    body_ += "&ScheduledAfterMinutes=" + gateway_.Bytes(WithoutLeadingComma(minutes));
    body_ += "&NotifyMe=";
    body_ += schedule.notify ? '1' : '0';
  }

  static TextView WithoutLeadingComma(TextView text) { return text.substr(text.starts_with(u',') ? 1 : 0); }

  Gateway& gateway_;
  const SendChoices& choices_;
  Layout layout_;
  Composition& composition_;
  bool many_;
  std::string body_;
};

std::string_view PathOf(const SendChoices& choices, Layout layout, const Composition& composition) {
  const bool many_numbers = composition.numbers.parts() > kManyNumbers;
  const bool scheduled = choices.schedule.wanted;
  switch (layout) {
    case Layout::kUnicode:
      return kSendPath;
    case Layout::kStandard:
      if (!scheduled) return kSendPath;
      return composition.count > kManyScheduled ? kScheduleManyPath : kSchedulePath;
    case Layout::kRecords:
      if (scheduled) return many_numbers ? kScheduleManyPath : kScheduleRecordsPath;
      return many_numbers ? kSendManyRecordsPath : kSendRecordsPath;
  }
  return {};
}

Text FailureBlock() {
  constexpr std::array<TextView, 7> kLines = {
      u"Request/Response Failure!!!",
      u"This has happened due to any of the following reasons...",
      u"1) No Internet Connection ",
      u"2) Invalid Proxy Settings",
      u"3) Connection lost, ",
      u"    In this case, It may also be possible that your messages has been sent,",
      u"    So please check delivery reports before sending again."};
  Text block;
  for (const TextView line : kLines) {
    if (!block.empty()) block += kCrLf;
    block += line;
  }
  return block;
}

SendOutcome ShowAccepted(Forms& forms, std::int32_t count, bool scheduled, const SendRules& rules) {
  const TextView sent =
      scheduled ? TextView(u" SMS Messages Scheduled Successfully") : TextView(u" SMS Messages Sent");
  ShowAlert(forms, NumberToText(count) + Text(sent), kInformation, rules.accepted_title);
  return SendOutcome::kAccepted;
}

}  // namespace

Submission BuildSubmission(Gateway& gateway, const SendChoices& choices, Layout layout,
                           Composition& composition) {
  return {PathOf(choices, layout, composition), BodyBuilder(gateway, choices, layout, composition).Build()};
}

SendOutcome Submit(const AddInContext& context, const SendChoices& choices, const SendRules& rules,
                   Composition& composition) {
  const Submission submission = BuildSubmission(context.gateway, choices, rules.layout, composition);
  context.progress.Show(rules.layout == Layout::kUnicode
                            ? u"Please wait - Sending SMS Messages " + NumberToText(composition.count)
                            : Text(u"Please wait - Sending SMS..."));
  const Text reply = context.gateway.HttpPostForm(submission.path, submission.body);
  context.progress.Close();

  Forms& forms = context.platform.forms;
  if (reply == kSuccessCode) {
    const bool scheduled = choices.schedule.wanted && rules.layout != Layout::kUnicode;
    return ShowAccepted(forms, composition.count, scheduled, rules);
  }
  const std::array refusals = {
      CodeMessage{kNoCreditCode, rules.no_credit},
      CodeMessage{kUnknownUserCode, kInvalidUserName},
      CodeMessage{kWrongPasswordCode, kInvalidPassword},
      CodeMessage{kBlockedCode, kAccountBlocked},
      CodeMessage{kErrorCode, u"Error occured while sending SMS messages"},
  };
  if (const auto message = FindMessage(refusals, reply)) {
    ShowAlert(forms, *message, kWarning, rules.refused_title);
    return SendOutcome::kRefused;
  }
  ShowAlert(forms, FailureBlock(), kCritical, rules.refused_title);
  return SendOutcome::kUnknown;
}

}  // namespace quorvel
