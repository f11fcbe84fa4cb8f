#include <gmock/gmock.h>

#include "account/frmLogin.h"
#include "preview/frmPreviewSMS.h"
#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SendCommandTest : public SendTest {
 protected:
  Text Setting(TextView section, TextView key) {
    return settings_.Read({u"Tessaly", section, key}).value_or(u"missing");
  }
};

Alert Told(TextView message, TextView title = u"SMS") {
  return {Text(message), kInformation, Text(title)};
}

TEST_F(SendCommandTest, ChecksEndAtTheFirstThatFailsAndLeadToItsField) {
  using F = frmSendSMS;
  struct Step {
    void (*mend)(F&);  // what the user changes after the alert before
    TextView message, title;
    std::string_view focus;
  };
  const Step steps[] = {
      {[](F&) {}, u"Please enter start row", u"SMS", "txtStartRow"},
      {[](F& f) { EXPECT_EQ(f.txtStartRow.text(), u""); }, u"Please enter start row", u"SMS", "txtStartRow"},
      {[](F& f) { f.txtStartRow.UserType(u"abc"); }, u"Start row should be numeric only", u"SMS",
       "txtStartRow"},
      {[](F& f) { f.txtStartRow.UserType(u"0"); }, u"Start row should be greater than zero", u"SMS",
       "txtStartRow"},
      {[](F& f) { f.txtStartRow.UserType(u"-3"); }, u"Start row should be greater than zero", u"SMS",
       "txtStartRow"},
      {[](F& f) { f.txtStartRow.UserType(u" 11 "); }, u"Please enter end row", u"SMS", "txtEndRow"},
      {[](F& f) { f.txtEndRow.UserType(u"1 1"); }, u"End row should be numeric only", u"SMS", "txtEndRow"},
      {[](F& f) { f.txtEndRow.UserType(u"-1"); }, u"End row should be greater than zero", u"SMS",
       "txtEndRow"},
      {[](F& f) { f.txtEndRow.UserType(u"9"); }, u"End row should be greater than Start row", u"SMS",
       "txtEndRow"},
      {[](F& f) { f.txtEndRow.UserType(u"11"); }, u"Please enter Email Subject", u"SMS + Email",
       "txtEmailSubject"},
      {[](F& f) { f.txtEmailSubject.UserType(u"Hi"); }, u"Please Select Email Address Column", u"SMS + Email",
       "Combo_EmailColumn"},
      {[](F& f) { f.Combo_EmailColumn.UserSelect(1); }, u"Please enter message", u"SMS", "txtMsg_RTB"},
      {[](F& f) { EXPECT_EQ(f.txtMsg_RTB.text(), u""); }, u"Please enter message", u"SMS", "txtMsg_RTB"},
      {[](F& f) { f.txtMsg_RTB.UserType(u"Hello"); }, u"Scheduler Title Should Have Minimum 6 Characters.",
       u"S M S Scheduler", "txt_SchedulerName"},
      {[](F& f) { f.txt_SchedulerName.UserType(u"four"); },
       u"Please Select Date & Time Greater Than '01 March 2024 12:00 PM'", u"SMS", "cmdSend"},
  };
  WithSendForm([&](frmSendSMS& form) {
    form.txtCountryCode.UserType(u"+44");
    form.ComboCountryCodeLength.UserSelect(10);
    form.optRowRange.UserChoose();
    form.txtStartRow.UserType(u"  ");
    form.txtMsg_RTB.UserType(u"   ");
    ChooseSchedule(form);
    form.txt_SchedulerName.UserType(u"abc");
    form.combo_dd.UserType(u"1");  // now, to the minute
    form.cmdEmailPanel.UserPress();
    form.Chk_SendEmail.UserSet(true);
    form.cmdAccountPanel.UserPress();
    for (const Step& step : steps) {
      step.mend(form);
      form.cmdSend.UserPress();
      EXPECT_THAT(NewAlerts(), ElementsAre(Told(step.message, step.title)));
      EXPECT_EQ(form.active_control()->name(), step.focus);
      EXPECT_TRUE(form.active_control()->usable()) << step.focus;
      EXPECT_EQ(form.outcome(), SendOutcome::kNotSent);
      EXPECT_EQ(Setting(u"CountryCode", u"LatestCountryCode"), u"+44");  // kept before any check
      EXPECT_EQ(Setting(u"CountryLeng", u"SelectedCountryLen"), u"10");
    }
    EXPECT_EQ(form.txtStartRow.text(), u" 11 ");
  });
  EXPECT_THAT(NewRequests(), IsEmpty());
}

TEST_F(SendCommandTest, AWorkbookAndALoginComeFirst) {
  WithSendForm([&](frmSendSMS& form) {
    connect_.Logout();
    NewAlerts();
    forms_.On<frmLogin>([](frmLogin& login) { login.cmdCancel.UserPress(); });
    form.cmdSend.UserPress();
    EXPECT_THAT(NewAlerts(), IsEmpty());
    EXPECT_EQ(Setting(u"CountryCode", u"LatestCountryCode"), u"missing");
    application_.CloseWorkbook();
    form.cmdSend.UserPress();
    EXPECT_THAT(NewAlerts(), ElementsAre(Told(u"Work book does not exit. Please check")));
  });
  EXPECT_EQ(forms_.shown().back(), "AlertBox");
  EXPECT_THAT(NewRequests(), IsEmpty());
}

TEST_F(SendCommandTest, ALoginInTheMiddleGoesOnWithTheSend) {
  Fill({{9000000001.0}});
  Send(u"Hi", [&](frmSendSMS&) {
    connect_.Logout();
    forms_.On<frmLogin>([this](frmLogin& login) {
      login.txtPasswd.UserType(u"p@w");
      login.cmdLogin.UserPress();
      NewRequests();
    });
    internet_.Answer("000");  // to the login
  });
}

TEST_F(SendCommandTest, AScheduleIsAskedForByItsMomentAndSentInWholeMinutes) {
  Fill({{9000000001.0}});
  clock_.Advance(59'000);
  forms_.AnswerNext(Answer::kYes);
  const auto request = Send(u"Hi", [](frmSendSMS& form) {
    ChooseSchedule(form);
    form.chkNotifyMe.UserSet(true);
  });
  EXPECT_THAT(
      forms_.questions(),
      ElementsAre(ScriptedForms::Question{
          u"Are You Sure You Want To Set Scheculer On 'Saturday 02 March 2024 12:00 PM'", 68, u"SMS", {}}));
  EXPECT_EQ(request.object, "Merrow/SaveSchedulerData_Excel_Dynamic.asp");
  EXPECT_EQ(request.body,
            StandardBody("9000000001", "Hi", "",
                         "&IsConcatSMS=0&schedulerName=Later&ScheduledAfterMinutes=1440&NotifyMe=1"));
  EXPECT_THAT(NewAlerts(), ElementsAre(Told(u"1 SMS Messages Scheduled Successfully", kSendTitle)));

  forms_.AnswerNext(Answer::kNo);
  ExpectNotSent(u"Hi", ChooseSchedule, SendOutcome::kCancelled);
}

TEST_F(SendCommandTest, AMomentThatIsNoneOrHasPassedPutsTheYearAndMonthBack) {
  struct Row {
    TextView month, day, year, time;
  };
  for (const Row& row :
       {Row{u"3", u"1", u"2024", u"12:00 PM"}, Row{u"12", u"31", u"2023", u"11:00 PM"},
        Row{u"2", u"30", u"2025", u"1:00 PM"}, Row{u"4", u"1", u"2024", u"soon"}, Row{u"", u"", u"", u""}}) {
    ExpectNotSent(u"Hi", [&](frmSendSMS& form) {
      ChooseSchedule(form);
      form.combo_year.UserType(row.year);
      form.combo_month.UserType(row.month);
      form.combo_dd.UserType(row.day);
      form.combo_Times.UserType(row.time);
      form.cmdSend.UserPress();
      EXPECT_EQ(form.combo_year.text(), u"2024");
      EXPECT_EQ(form.combo_month.text(), u"3");
      form.combo_year.UserType(u"2023");  // for the press that follows
    });
    EXPECT_EQ(NewAlerts().size(), 2U) << ToUtf8(row.time);
  }
  clock_.SetNow({.year = 2010, .month = 12, .day = 31});
  ExpectNotSent(u"Hi", ChooseSchedule);
  EXPECT_THAT(NewAlerts(),
              ElementsAre(Told(u"Please Correct Your System Clock And Submit Again.", u"SMS Scheduler")));
}

// Whatever the time, the pickers begin with a moment that is still ahead and offer no day that does not
// exist.
TEST_F(SendCommandTest, PickersBeginWithinTheHourAhead) {
  Fill({{9000000001.0}});
  for (const DateParts& now :
       {DateParts{.year = 2024, .month = 3, .day = 1, .hour = 12, .minute = 0, .second = 0},
        DateParts{.year = 2024, .month = 3, .day = 1, .hour = 12, .minute = 14, .second = 59},
        DateParts{.year = 2024, .month = 2, .day = 29, .hour = 23, .minute = 29, .second = 0},
        DateParts{.year = 2024, .month = 12, .day = 31, .hour = 23, .minute = 44, .second = 59},
        DateParts{.year = 2024, .month = 12, .day = 31, .hour = 23, .minute = 59, .second = 59},
        DateParts{.year = 2025, .month = 2, .day = 28, .hour = 23, .minute = 45, .second = 0}}) {
    clock_.SetNow(now);
    forms_.AnswerNext(Answer::kYes);
    const auto request = Send(u"Hi", [](frmSendSMS& form) {
      form.cmdSchedulerPanel.UserPress();
      form.chkSetScheduler.UserSet(true);
      form.txt_SchedulerName.UserType(u"Soon");
    });
    const std::size_t at = request.body.find("AfterMinutes=");
    ASSERT_NE(at, std::string::npos);
    const int minutes = std::stoi(request.body.substr(at + 13));
    EXPECT_TRUE(minutes >= 15 && minutes <= 60) << now.hour << ":" << now.minute << ": " << minutes;
  }
  clock_.SetNow({.year = 2025, .month = 2, .day = 27, .hour = 23, .minute = 10, .second = 0});
  WithSendForm([](frmSendSMS& form) {
    form.cmdSchedulerPanel.UserPress();
    form.chkSetScheduler.UserSet(true);
    EXPECT_THAT(form.combo_year.items(), ElementsAre(u"2025", u"2026", u"2027"));
    EXPECT_EQ(form.combo_month.items().front(), u"2");
    EXPECT_THAT(form.combo_dd.items(), ElementsAre(u"27", u"28"));
    EXPECT_THAT(form.combo_Times.items(), ElementsAre(u"11:15 PM", u"11:30 PM", u"11:45 PM"));
    form.combo_dd.UserSelect(1);
    EXPECT_EQ(form.combo_Times.items().front(), u"12:00 AM");
    EXPECT_EQ(form.combo_Times.items().size(), 96U);
    form.combo_year.UserSelect(1);
    EXPECT_EQ(form.combo_month.items().size(), 12U);
    form.combo_month.UserSelect(3);
    EXPECT_EQ(form.combo_dd.items().size(), 30U);
  });
}

TEST_F(SendCommandTest, TheTextDecidesBetweenTheSends) {
  struct Row {
    TextView message;
    bool language;
    std::string_view version;
  };
  Fill({{9000000001.0}});
  for (const Row& row :
       {Row{u"plain \u00E9\u00FF", false, "ver=1.0"}, Row{u"plain", true, "ver=1.2"},
        Row{u"\u0627", false, "ver=1.2"}, Row{u"a\u20AC", false, "ver=1.2"}, Row{u"\u8BDD", false, "ver=1.0"},
        Row{u"\u8BDD\u0100", false, "ver=1.2"}, Row{u"\U0001F600", false, "ver=1.0"}}) {
    const auto request =
        Send(row.message, [&](frmSendSMS& form) { form.ChkBox_LanguageSMS.UserSet(row.language); });
    EXPECT_THAT(request.body, HasSubstr(row.version)) << ToUtf8(row.message);
  }
  WithSendForm([&](frmSendSMS& form) {
    form.txtMsg_RTB.UserType(u"\u0627");
    form.cmdSend.UserPress();  // no column is chosen: nothing goes out
    EXPECT_TRUE(form.ChkBox_LanguageSMS.value());
  });
}

TEST_F(SendCommandTest, AUnicodeSendDoesNotColourTheCountsOfTheNext) {
  Fill({{9000000001.0}});
  std::vector<Text> totals;
  forms_.On<frmPreviewSMS>([&](frmPreviewSMS& preview) {
    totals.push_back(preview.label_Total_SMSs.caption());
    preview.cmdContinueSMS.UserPress();
  });
  Send(u"\u0627" + Text(63, u'x'), ChoosePreview);
  Send(Text(64, u'x'), ChoosePreview);
  EXPECT_THAT(totals, ElementsAre(u"2", u"1"));
}

TEST_F(SendCommandTest, OneMessageIsOfOneService) {
  WithSendForm([](frmSendSMS& form) {
    for (CheckBox* chosen :
         {&form.ChkBox_EnglishSMS, &form.ChkBox_LanguageSMS, &form.chkFlash, &form.ChkBox_WAPPush}) {
      chosen->UserSet(true);
      const int count = form.ChkBox_EnglishSMS.value() + form.ChkBox_LanguageSMS.value() +
                        form.chkFlash.value() + form.ChkBox_WAPPush.value();
      EXPECT_EQ(count, 1);
      EXPECT_TRUE(chosen->value());
    }
  });
}

}  // namespace
}  // namespace quorvel
