#include <gmock/gmock.h>

#include "addin/common/frmDisplay.h"
#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::SizeIs;

struct Kind {
  const char* name;
  TextView message;
  void (*options)(frmSendSMS&);
  std::string_view page;
};

void ChooseEmail(frmSendSMS& form) {
  form.cmdEmailPanel.UserPress();
  form.Chk_SendEmail.UserSet(true);
  form.txtEmailSubject.UserType(u"S");
  form.Combo_EmailColumn.UserSelect(2);
}

class SendFaultsTest : public SendTest, public testing::WithParamInterface<Kind> {
 protected:
  void SetUp() override {
    SendTest::SetUp();
    Fill({{Text(u"1"), Text(u"a")}, {Text(u"2"), Text(u"b")}, {Text(u"3"), Text(u"c")}});
    forms_.AnswerNext(u"#B#<>'x'");
    for (int i = 0; i < 100; ++i) forms_.AnswerNext(Answer::kOk);  // to the number of records
  }

  void WithFilledForm(const std::function<void(frmSendSMS&)>& user) {
    WithSendForm([&](frmSendSMS& form) {
      form.cmbMobileNumbersCell.UserSelect(0);
      form.txtMsg_RTB.UserType(GetParam().message);
      GetParam().options(form);
      user(form);
    });
  }
};

// Each call of the host fails once, one after the other, until the send gets through.
TEST_P(SendFaultsTest, ACallOfTheHostThatFailsSendsNothingAndTheNextSendIsWhole) {
  struct Row {
    std::string_view operation;
    int at_least;  // calls in a send
  };
  WithFilledForm([&](frmSendSMS& form) {
    for (const auto& [operation, at_least] :
         {Row{"Application::ActiveWorkbook", 2}, Row{"Workbook::ActiveSheet", 1}, Row{"Sheet::UsedRows", 1},
          Row{"Sheet::Value", 4}, Row{"Sheet::CellText", 3}, Row{"Settings::Write", 2}}) {
      internet_.Answer("000");
      int failures = 0;
      for (; failures < 50; ++failures) {
        faults_.Fail(operation, failures + 1, 1);
        form.cmdSend.UserPress();
        faults_.Clear();
        const std::vector<Alert> alerts = NewAlerts();
        ASSERT_THAT(alerts, SizeIs(1)) << operation;
        EXPECT_EQ(forms_.Open<frmDisplay>(), nullptr);
        if (form.outcome() == SendOutcome::kAccepted) break;
        EXPECT_EQ(alerts[0].title, u"Error");
        EXPECT_THAT(NewRequests(), SizeIs(0)) << operation << " " << failures + 1;
      }
      EXPECT_GE(failures, at_least) << operation;
      const auto requests = NewRequests();
      ASSERT_THAT(requests, SizeIs(1)) << operation;
      EXPECT_EQ(requests[0].object, GetParam().page);
      EXPECT_NE(requests[0].body.find("mobilenumber=1,2,3&"), std::string::npos);
    }
  });
}

TEST_P(SendFaultsTest, ACallOfTheInternetThatFailsIsToldAndNotRepeated) {
  WithFilledForm([&](frmSendSMS& form) {
    for (std::size_t step = 1; step <= 5; ++step) {  // up to the first read
      internet_.Answer("000");
      internet_.FailCall(internet_.calls().size() + step);
      form.cmdSend.UserPress();
      EXPECT_EQ(form.outcome(), SendOutcome::kUnknown);
      EXPECT_THAT(NewRequests(), SizeIs(step < 5 ? 0 : 1)) << step;
      if (step == 5) internet_.Answer("000");
      form.cmdSend.UserPress();
      EXPECT_EQ(form.outcome(), SendOutcome::kAccepted);
      EXPECT_THAT(NewRequests(), SizeIs(1));
      EXPECT_EQ(internet_.open_handles(), 0U);
      EXPECT_THAT(NewAlerts(), SizeIs(2));
    }
  });
}

INSTANTIATE_TEST_SUITE_P(
    Sends, SendFaultsTest,
    testing::Values(Kind{"Standard", u"Hi #B#", ChooseEmail, "Tools/Excel_Plugin/SaveBulkSMS.aspx"},
                    Kind{"Unicode", u"\u0416 #B#", ChooseEmail, "Tools/Excel_Plugin/SaveBulkSMS.aspx"},
                    Kind{"Filtered", u"Hi #B#", ChooseFilter, "Merrow/SaveExcelData_V2.asp"},
                    Kind{"Grouped", u"Hi #B#", ChooseGroups, "Merrow/SaveExcelData_V2.asp"}),
    [](const auto& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace quorvel
