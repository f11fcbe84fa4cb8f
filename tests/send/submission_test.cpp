#include <gmock/gmock.h>

#include <algorithm>

#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class SubmissionTest : public SendTest {};

TEST_F(SubmissionTest, GoesToTheAccountsServerAsOneForm) {
  Fill({{Text(u"1"), Text(u"Ann")}});
  const auto request = Send(u"Hello #B#, 1 < 2 & so on");
  EXPECT_EQ(request,
            (ScriptedInternet::Request{u"sms.example", 80, "Tools/Excel_Plugin/SaveBulkSMS.aspx",
                                       "Content-Type: application/x-www-form-urlencoded\r\n",
                                       StandardBody("1", "Hello+%23B%23%2C+1+%3C+2+%26+so+on", "B%01Ann")}));
}

TEST_F(SubmissionTest, EveryOptionHasItsPlaceInTheBody) {
  struct Row {
    SendTest::User options;
    std::string_view tail;
  };
  constexpr auto kEmail = [](frmSendSMS& form) {
    form.cmdEmailPanel.UserPress();
    form.Chk_SendEmail.UserSet(true);
    form.txtEmailSubject.UserType(u" A & \u00DC ");
    form.Combo_EmailColumn.UserSelect(2);
  };
  const Row rows[] = {
      {[](frmSendSMS& form) { form.Combo_SenderID.UserType(u" SHOP & co "); }, "SHOP+%26+co&IsConcatSMS=0"},
      {[](frmSendSMS& form) { form.Combo_SenderID.UserSelect(0); }, "ALERT&IsConcatSMS=0"},
      {[](frmSendSMS& form) { form.ChkBox_EnglishSMS.UserSet(true); }, "&IsConcatSMS=0&TOS=11"},
      {[](frmSendSMS& form) { form.chkFlash.UserSet(true); }, "&IsConcatSMS=0&TOS=46"},
      {[](frmSendSMS& form) {
         form.ChkBox_WAPPush.UserSet(true);
         form.txtWAP_URL.UserType(u" http://x/?a=1&b ");
       },
       "&IsConcatSMS=0&TOS=31&WAP_URL=+http%3A%2F%2Fx%2F%3Fa%3D1%26b+"},
      {kEmail,
       "&IsConcatSMS=0&sendEmail=1&EmailSubject=+A+%26+%DC+&EmailAdresses=%2Ca%40x&FromEmailID=&FromEmailPwd="},
      {[kEmail](frmSendSMS& form) {
         kEmail(form);
         form.Chk_FastProcessing.UserSet(true);
         form.txt_FromEmailID.UserType(u"me@x");
         form.txt_FromEmailPwd.UserType(u" s & t ");
         form.chkFlash.UserSet(true);
       },
       "&IsConcatSMS=0&TOS=46&sendEmail=1&EmailSubject=+A+%26+%DC+&EmailAdresses=%2Ca%40x&FromEmailID=me%40x"
       "&FromEmailPwd=+s+%26+t+"}};
  Fill({{Text(u"1"), {}}, {Text(u"2"), Text(u"a@x")}});
  pulled_ = "|SenderIDs_Data|ALERT|sid|";
  for (const auto& [options, tail] : rows) {
    const std::string body = Send(u"Hi", options).body;
    EXPECT_EQ(body, StandardBody("1,2", "Hi", "", "") + std::string(tail));
  }
  EXPECT_EQ(settings_.Read({u"Tessaly", u"FromEmailSettings", u"FromEmailPwd"}), u" s & t ");
}

// The number of commas and not of rows decides on the escapes, the number of messages on the scheduling page.
TEST_F(SubmissionTest, ThePageAndTheEscapesFollowTheSizeOfTheJob) {
  struct Row {
    int rows;
    SendTest::User options;
    std::string_view path;
    bool escaped;
  };
  constexpr std::string_view kSend = "Tools/Excel_Plugin/SaveBulkSMS.aspx";
  constexpr std::string_view kMany = "Merrow_1/SaveSchedulerData_Excel.aspx";
  const auto both = [](frmSendSMS& form) {
    ChooseGroups(form);
    ChooseSchedule(form);
  };
  for (const auto& [rows, options, path, escaped] :
       {Row{1001, {}, kSend, false}, Row{1002, {}, kSend, true},
        Row{700, ChooseSchedule, "Merrow/SaveSchedulerData_Excel_Dynamic.asp", false},
        Row{701, ChooseSchedule, kMany, false}, Row{1002, ChooseSchedule, kMany, true},
        Row{1001, ChooseGroups, "Merrow/SaveExcelData_V2.asp", false},
        Row{1002, ChooseGroups, "Merrow_1/SaveBulkSMS.aspx", false},
        Row{1001, both, "Merrow/SaveSchedulerData_Excel.asp", false}, Row{1002, both, kMany, false}}) {
    application_.OpenWorkbook();
    FillNumbers(rows);
    forms_.AnswerNext(Answer::kYes);  // to the schedule, where there is one
    const auto request = Send(u"1<2>0", options);
    EXPECT_EQ(request.object, path) << rows;
    EXPECT_EQ(std::count(request.body.begin(), request.body.end(), ','), rows - 1);
    const std::string_view message = request.body;
    const std::string_view expected =
        escaped ? "&message=1%7CSMSC%5FLT%7C2%7CSMSC%5FGT%7C0&" : "&message=1%3C2%3E0&";
    const bool grouped = request.body.find("&message=%23A%23&") != std::string::npos;
    EXPECT_TRUE(grouped || message.find(expected) != std::string_view::npos) << rows;
  }
}

TEST_F(SubmissionTest, ANumberThatHoldsACommaCountsAsTwo) {
  FillNumbers(1001);
  sheet().Set({u"A", 1}, Text(u"1,2"));
  EXPECT_THAT(Send(u"<").body.substr(13), StartsWith("1,2,9000000002,"));
  EXPECT_EQ(NewAlerts().front().message, u"1001 SMS Messages Sent");
  EXPECT_NE(internet_.requests().back().body.find("&message=%7CSMSC%5FLT%7C&"), std::string::npos);
}

Text FailureBlock() {
  return u"Request/Response Failure!!!\r\n"
         u"This has happened due to any of the following reasons...\r\n"
         u"1) No Internet Connection \r\n"
         u"2) Invalid Proxy Settings\r\n"
         u"3) Connection lost, \r\n"
         u"    In this case, It may also be possible that your messages has been sent,\r\n"
         u"    So please check delivery reports before sending again.";
}

TEST_F(SubmissionTest, EveryReplyHasItsMessageAndNoneASecondPost) {
  struct Kind {
    TextView message;
    SendTest::User options;
    TextView no_credit;
    TextView accepted_title, refused_title;
  };
  const Kind kinds[] = {{u"Hi", {}, u"No Balance. Please buy SMS", kSendTitle, kSendTitle},
                        {u"\u0627",
                         {},
                         u"No Balance. Please buy SMS credits to continue sending SMS.",
                         u"S M S Application",
                         u"SMS Application"},
                        {u"Hi", ChooseGroups, u"No Balance. Please buy SMS.", kSendTitle, kSendTitle}};
  Fill({{Text(u"1")}, {Text(u"2")}});
  for (const Kind& kind : kinds) {
    struct Row {
      std::string_view reply;
      Text message;
      SendOutcome outcome;
    };
    for (const auto& [reply, message, outcome] :
         {Row{"000", u"2 SMS Messages Sent", SendOutcome::kAccepted},
          Row{"001", Text(kind.no_credit), SendOutcome::kRefused},
          Row{"002", u"Invalid User Name", SendOutcome::kRefused},
          Row{"003", u"Invalid Password", SendOutcome::kRefused},
          Row{"0110", u"Your account has been blocked", SendOutcome::kRefused},
          Row{"<ERROR>", u"Error occured while sending SMS messages", SendOutcome::kRefused},
          Row{"", FailureBlock(), SendOutcome::kUnknown}, Row{" 000", FailureBlock(), SendOutcome::kUnknown},
          Row{"000\r\n", FailureBlock(), SendOutcome::kUnknown},
          Row{"004", FailureBlock(), SendOutcome::kUnknown},
          Row{"<html>502 \xFF</html>", FailureBlock(), SendOutcome::kUnknown}}) {
      Send(kind.message, kind.options, reply);
      EXPECT_EQ(outcome_, outcome) << reply;
      const std::vector<Alert> alerts = NewAlerts();
      ASSERT_EQ(alerts.size(), 1U) << reply;
      EXPECT_EQ(alerts[0].message, message) << reply;
      EXPECT_EQ(alerts[0].title,
                outcome == SendOutcome::kAccepted ? kind.accepted_title : kind.refused_title);
    }
  }
}

TEST_F(SubmissionTest, ALostConnectionMayHaveSentTheJobAndIsNotTriedAgain) {
  Fill({{Text(u"1")}});
  for (const bool sent : {false, true}) {
    WithSendForm([&](frmSendSMS& form) {
      form.cmbMobileNumbersCell.UserSelect(0);
      form.txtMsg_RTB.UserType(u"Hi");
      sent ? internet_.AnswerCut("00") : internet_.NoAnswer();
      form.cmdSend.UserPress();
      EXPECT_EQ(form.outcome(), SendOutcome::kUnknown);
    });
    EXPECT_EQ(NewRequests().size(), 1U);
    EXPECT_THAT(NewAlerts(), ElementsAre(Alert{FailureBlock(), kCritical, Text(kSendTitle)}));
  }
}

}  // namespace
}  // namespace quorvel
