#include <gmock/gmock.h>

#include "addin/common/frmDisplay.h"
#include "preview/frmPreviewSMS.h"
#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using Question = ScriptedForms::Question;

class WalkTest : public SendTest {};

Text X(std::size_t length) {
  return Text(length, u'x');
}

Question AskLong(TextView row) {
  return {u"SMS message contains more than 160 characters for the row(" + Text(row) +
              u"). \r\nWould you like to send more than 160 characters.",
          1,
          Text(kSendTitle),
          {}};
}

TEST_F(WalkTest, LongMessagesAreAskedForOnceByWhatIsMerged) {
  Fill({{Text(u"1"), X(160)}, {Text(u"2"), X(161)}, {Text(u"3"), X(162)}});
  forms_.AnswerNext(Answer::kOk);
  EXPECT_THAT(Send(u"#B#").body, EndsWith("&IsConcatSMS=1"));
  EXPECT_THAT(forms_.questions(), ElementsAre(AskLong(u"2")));

  forms_.AnswerNext(Answer::kCancel);
  ExpectNotSent(u"#B#", {}, SendOutcome::kCancelled);
  forms_.AnswerNext(Answer::kCancel);  // agreed to once is not agreed to for ever
  ExpectNotSent(X(161), {}, SendOutcome::kCancelled);
  EXPECT_THAT(forms_.questions(), ElementsAre(AskLong(u"2"), AskLong(u"2"), AskLong(u"1")));
}

TEST_F(WalkTest, ATemplateThatShrinksOrGrowsIsJudgedByItsMergedText) {
  Fill({{Text(u"1"), Text(u"b")}});
  EXPECT_THAT(Send(X(159) + u"#B#").body, EndsWith("&IsConcatSMS=0"));  // 162 before, 160 after
  EXPECT_THAT(Send(X(157) + u"# B").body, EndsWith("&IsConcatSMS=0"));
  EXPECT_THAT(forms_.questions(), IsEmpty());
  sheet().Set({u"B", 1}, Text(u"four"));
  forms_.AnswerNext(Answer::kOk);
  EXPECT_THAT(Send(X(157) + u"#B#").body, EndsWith("&IsConcatSMS=1"));  // 160 before, 161 after
}

TEST_F(WalkTest, AMessageThatIsEmptyOnceMergedStopsTheSend) {
  Fill({{Text(u"1"), Text(u"x")}, {Text(u"2"), Text(u"  ")}, {Text(u"3"), Text(u"x")}});
  ExpectNotSent(u" #B# ");
  EXPECT_THAT(NewAlerts(),
              ElementsAre(Alert{u"SMS message is empty for the row(2)", kInformation, Text(kSendTitle)}));
}

TEST_F(WalkTest, ThePreviewShowsWhatWillBeSentAndDecides) {
  Fill({{Text(u"9-1.1"), Text(u"Ann")}, {{}, Text(u"none")}, {Text(u"2 2"), Text(u"Bob")}});
  sheet().Set({u"C", 1}, Text(u"stored before the send stops"));
  ExpectNotSent(u"#C#", ChoosePreview);
  std::vector<Text> shown;
  bool approve = false;
  forms_.On<frmPreviewSMS>([&](frmPreviewSMS& preview) {
    shown = {preview.txt_mno.text(), preview.txt_msg.text(), preview.label_SMSCount.caption()};
    preview.cmdNext.UserPress();
    shown.push_back(preview.txt_mno.text());
    shown.push_back(preview.txt_msg.text());
    preview.txt_msg.UserType(u"typed over");
    (approve ? preview.cmdContinueSMS : preview.cmdCancel).UserPress();
  });
  ExpectNotSent(u"Hi #B#", ChoosePreview, SendOutcome::kCancelled);
  EXPECT_THAT(shown, ElementsAre(u"911", u"Hi Ann", u"1/2", u"22", u"Hi Bob"));
  approve = true;
  EXPECT_EQ(Send(u"Hi #B#", ChoosePreview).body, StandardBody("911,22", "Hi+%23B%23",
                                                              "B%01Ann\x7F"
                                                              "B%01Bob"));
  EXPECT_THAT(shown, ElementsAre(u"911", u"Hi Ann", u"1/2", u"22", u"Hi Bob"));
}

TEST_F(WalkTest, MoreMessagesThanThePreviewCountsSendNothing) {
  FillNumbers(32768);
  ExpectNotSent(u"Hi", ChoosePreview);
  EXPECT_EQ(NewAlerts().size(), 1U);
  Send(u"Hi");
  EXPECT_EQ(NewAlerts().front().message, u"32768 SMS Messages Sent");
}

TEST_F(WalkTest, CancellingStopsAtTheNextRowAndTheNextSendIsWhole) {
  FillNumbers(3);
  for (const TextView text :
       {u"Please wait - sending SMS messages", u"Send SMS\r\nPlease wait - Processing Record No. 1",
        u"Send SMS\r\nPlease wait - Processing Record No. 3"}) {
    CancelAt(text);
    ExpectNotSent(u"Hi", {}, SendOutcome::kCancelled);
    forms_.OnYield({});
    EXPECT_EQ(Send(u"Hi").body, StandardBody("9000000001,9000000002,9000000003", "Hi", ""));
  }
}

TEST_F(WalkTest, WhatIsOnItsWayCannotBeCancelled) {
  FillNumbers(2);
  CancelAt(u"Please wait - Sending SMS...");
  Send(u"#B#!");
  EXPECT_EQ(outcome_, SendOutcome::kAccepted);
}

TEST_F(WalkTest, ProgressIsToldStepByStep) {
  FillNumbers(2);
  std::vector<Text> texts;
  forms_.OnYield([&] {
    clock_.Advance(1000);
    const auto* const window = forms_.Open<frmDisplay>();
    if (window == nullptr) return;
    const Text& text = window->lblProgress.caption();
    if (texts.empty() || texts.back() != text) texts.push_back(text);
  });
  Send(u"Hi");
  EXPECT_THAT(texts, ElementsAre(u"Please wait - Selecting Columns...", u"Please wait - sending SMS messages",
                                 u"Send SMS\r\nPlease wait - Processing Record No. 1",
                                 u"Send SMS\r\nPlease wait - Processing Record No. 2",
                                 u"Please wait - Sending SMS..."));
}

// Events run while a send is under way: the button may be pressed again.
TEST_F(WalkTest, PressingSendAgainWhileItRunsSendsNothingTwice) {
  FillNumbers(2);
  frmSendSMS* open = nullptr;
  forms_.OnYield([&] {
    if (open != nullptr) open->cmdSend.UserPress();
  });
  Send(u"Hi", [&](frmSendSMS& form) { open = &form; });
  EXPECT_EQ(NewAlerts().size(), 1U);
}

class RowScheduleTest : public SendTest {
 protected:
  // Column B holds each row's date.
  User ByColumn() {
    forms_.AnswerNext(Answer::kYes);  // to the send's own moment
    return [](frmSendSMS& form) {
      ChooseSchedule(form);
      form.cmbSchedulerDateTime.UserSelect(2);
    };
  }
};

TEST_F(RowScheduleTest, EveryRowThatIsSentHasItsMinutes) {
  Fill({{Text(u"1"), Date{45352.75}},  // 6 PM
        {{}, Text(u"no date, no number")},
        {Text(u"2"), Text(u"03/02/2024 12:00 PM")},
        {Text(u"1"), Text(u"a duplicate, not looked at")},
        {Text(u"3"), Date{45352.5 + 1.0 / 1440}}});
  EXPECT_EQ(Send(u"Hi",
                 [choose = ByColumn()](frmSendSMS& form) {
                   choose(form);
                   ChooseNoDuplicates(form);
                 })
                .body,
            StandardBody("1,2,3", "Hi", "",
                         "&IsConcatSMS=0&schedulerName=Later&ScheduledAfterMinutes=360,1440,1&NotifyMe=0"));
  EXPECT_EQ(NewAlerts().front().message, u"3 SMS Messages Scheduled Successfully");
}

TEST_F(RowScheduleTest, ExpiredDatesAreAskedForOnceAndSentAtOnce) {
  Fill({{Text(u"1"), Date{45352.5}}, {Text(u"2"), Date{45352.25}}, {Text(u"3"), Date{45353}}});
  const User choose = ByColumn();  // now is noon of the first day
  forms_.AnswerNext(Answer::kYes);
  EXPECT_THAT(Send(u"Hi", choose).body, HasSubstr("&ScheduledAfterMinutes=0,0,720&"));
  EXPECT_EQ(forms_.questions().size(), 2U);
  EXPECT_EQ(
      forms_.questions().back().prompt,
      u"Column B Contains Expired Date(s). If you continue the messages with expired dates will be fired "
      u"instantly.\r\n Do You Wish To Continue?");
  NewAlerts();

  sheet().Set({u"B", 2}, Date{45353});
  const User again = ByColumn();
  forms_.AnswerNext(Answer::kNo);
  ExpectNotSent(u"Hi", again);
  ASSERT_EQ(NewAlerts().size(), 1U);
}

TEST_F(RowScheduleTest, ACellThatIsNoDateSendsNothing) {
  for (const CellValue& value : {CellValue{}, CellValue{Text(u"soon")}, CellValue{45353.0}}) {
    Fill({{Text(u"1"), Date{45353}}, {Text(u"2"), value}});
    ExpectNotSent(u"Hi", ByColumn());
    const std::vector<Alert> alerts = NewAlerts();
    ASSERT_EQ(alerts.size(), 1U);
    EXPECT_EQ(alerts[0].message, u"Invalid Date at B2\r\nPlease check...");
    // Unicode goes out at once: nobody asks for its dates.
    EXPECT_THAT(Send(u"\u0416", ByColumn()).body, HasSubstr("mobilenumber=1,2&message=0416&"));
    NewAlerts();
  }
}

}  // namespace
}  // namespace quorvel
