#include <gmock/gmock.h>

#include "send/filter.h"
#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

TEST(Filter, TheFormulaIsRewrittenForTheMessagesColumns) {
  struct Row {
    TextView message, formula, rewritten;
  };
  for (const auto& [message, formula, rewritten] :
       {Row{u"Hi #B#", u"#B# like 'Bas%'", u"FC_B like 'Bas%'"},
        Row{u"# C # due", u"#C#>##12/28/2009##", u"FC_C>#12/28/2009#"},
        Row{u"#B##C#", u"#B#=1 and #C#=2", u"#B#=1 and #C#=2"},  // the doubled mark hides both
        Row{u"#B# #C# #B#", u"#B#=#B# or #C#='##'", u"FC_B=FC_B or FC_C='#'"},
        Row{u"#B#", u"#C#=1", u"#C#=1"}, Row{u"#AB#", u"#AB#=1", u"FC_AB=1"},
        Row{u"#b# #B#", u"#B#=#b#", u"FC_B=FC_B"}, Row{u"#B#", u"#C#B#", u"#CFC_B"},
        Row{u"##B#", u"#B#=1", u"#B#=1"}, Row{u"none", u"", u""}}) {
    EXPECT_EQ(ToUtf8(RewriteFormula(formula, ScanFilterColumns(message))), ToUtf8(rewritten));
  }
}

class FilteredSendTest : public SendTest {
 protected:
  void SetUp() override {
    SendTest::SetUp();
    Fill({{Text(u"Mobile"), Text(u"Name"), Text(u"Due"), Text(u"Age")},
          {Text(u"1"), Text(u"Basil"), Date{40000}, 30.0},
          {Text(u"2"), Text(u"Ann"), Date{45000}, 9.0},
          {9876543210.0, Text(u"basma"), Date{45000.5}, 100.0}});
  }

  // The formula is set and the number of its records agreed to.
  User By(TextView formula) {
    forms_.AnswerNext(formula);
    forms_.AnswerNext(Answer::kOk);
    return ChooseFilter;
  }
};

TEST_F(FilteredSendTest, SendsToTheRecordsThatRemain) {
  const auto request = Send(u"Hi #B#", By(u"#B# like 'Bas%'"));
  EXPECT_EQ(request.object, "Merrow/SaveExcelData_V2.asp");
  EXPECT_EQ(request.body, RecordsBody("1,9876543210", "Hi+%23B%23",
                                      "B%01Basil\x7F"
                                      "B%01basma"));
  EXPECT_THAT(
      forms_.questions(),
      ElementsAre(
          ScriptedForms::Question{
              u"Enter Filter Formula.\nEx: #B# like 'Bas%' \n(All the specified rows of column B which "
              u"starts with Bas will receive SMS.)\nNote: Date Format is 'MM/DD/YYYY' Ex:-#B#>'12/28/2009'",
              0, u"SMS", u""},
          ScriptedForms::Question{
              u"2 records has been filtered. Do you want to SMS?", 1, Text(kSendTitle), {}}));
}

TEST_F(FilteredSendTest, ColumnsCompareByTheirType) {
  struct Row {
    TextView formula;
    std::string_view numbers;
  };
  for (const auto& [formula, numbers] :
       {Row{u"#D#>9", "1,9876543210"}, Row{u"#C#>##12/28/2009##", "2,9876543210"},
        Row{u"#C#>'12/28/2009' and #B#<>'ANN'", "9876543210"},
        Row{u"#D#=9 or #B# like '*sma*'", "2,9876543210"}}) {
    EXPECT_THAT(Send(u"#B# #C# #D#", By(formula)).body,
                HasSubstr("mobilenumber=" + std::string(numbers) + "&"))
        << ToUtf8(formula);
  }
}

// A formula that shows nothing leaves an empty text in its cell.
TEST_F(FilteredSendTest, CellsThatShowNothingDecideNoTypeAndStopNoSend) {
  for (const std::int32_t row : {1, 3}) {
    for (const TextView column : {u"C", u"D"}) sheet().Set({column, row}, Text());
  }
  EXPECT_THAT(Send(u"#D#", By(u"#D#>9")).body, HasSubstr("mobilenumber=1,9876543210&"));
  EXPECT_THAT(Send(u"#C#", By(u"#C#>##12/28/2009##")).body, HasSubstr("mobilenumber=9876543210&"));
}

TEST_F(FilteredSendTest, AValueBeyondItsFieldMattersOnlyToItsFormula) {
  sheet().Set({u"D", 3}, 9876543210.0);
  EXPECT_EQ(Send(u"#B# #D#", By(u"#B#='Ann'")).body,
            RecordsBody("2", "%23B%23+%23D%23", "B%01Ann%02D%019876543210"));
  for (const TextView formula : {u"#D#>9", u"fc_d>9"}) {
    forms_.AnswerNext(formula);
    ExpectNotSent(u"#B# #D#", ChooseFilter);
    EXPECT_THAT(ToUtf8(NewAlerts().back().message), HasSubstr("(D3)"));
  }
}

TEST_F(FilteredSendTest, OptionsOfTheBody) {
  // The text needs Unicode: the filter decides all the same.
  EXPECT_EQ(Send(u"\u0627#B#", By(u"#B#='Ann'")).body, RecordsBody("2", "%3F%23B%23", "B%01Ann"));
  EXPECT_THAT(Send(u"#B#",
                   [choose = By(u"#B#='Ann'")](frmSendSMS& form) {
                     choose(form);
                     form.chkFlash.UserSet(true);
                   })
                  .body,
              HasSubstr("&IsConcatSMS=0&TOS=FLASH"));

  forms_.AnswerNext(u"#B#='Ann'");
  forms_.AnswerNext(Answer::kYes);  // to the schedule
  forms_.AnswerNext(Answer::kOk);
  const auto request = Send(u"#B#", [](frmSendSMS& form) {
    ChooseFilter(form);
    ChooseSchedule(form);
  });
  EXPECT_EQ(request.object, "Merrow/SaveSchedulerData_Excel.asp");
  EXPECT_THAT(request.body,
              HasSubstr("&IsConcatSMS=0&TOS=N&schedulerName=Later&ScheduledAfterMinutes=1440&NotifyMe=0"));
  EXPECT_EQ(forms_.questions().back().prompt, u"1 records has been filtered. Do you want to Set Scheduler?");
}

TEST_F(FilteredSendTest, NothingIsSentWithoutRecordsOrConsent) {
  const auto set = [this](TextView formula) {
    forms_.AnswerNext(formula);
    return ChooseFilter;
  };
  ExpectNotSent(u"#B#", set(u"#B#='Zoe'"));
  EXPECT_THAT(NewAlerts(), ElementsAre(Alert{u" 0 Records Selected !!!", kInformation, Text(kSendTitle)}));

  for (const TextView refused : {u"#D#=1", u"#B# is 'Ann'", u"rubbish", u"#B#="}) {
    ExpectNotSent(u"#B#", set(refused));
    const std::vector<Alert> alerts = NewAlerts();
    ASSERT_THAT(alerts, SizeIs(1)) << ToUtf8(refused);
    EXPECT_EQ(alerts[0].title, u"Error");
  }

  const User by_name = set(u"#B#='Ann'");
  forms_.AnswerNext(Answer::kCancel);
  ExpectNotSent(u"#B#", by_name, SendOutcome::kCancelled);

  CancelAt(u"Please wait - Processing Record No. 3");
  ExpectNotSent(u"#B#", set(u"#B#='Ann'"), SendOutcome::kCancelled);
  forms_.OnYield({});

  sheet().Set({u"A", 3}, Text(u".-"));
  ExpectNotSent(u"#B#", By(u"#B#='Ann'"));
  EXPECT_EQ(NewAlerts().back(), (Alert{u"Invalid mobile number in column of A", kInformation, u"SMS Alert"}));
}

TEST_F(FilteredSendTest, AnEmptyFormulaTakesTheFilterOff) {
  forms_.AnswerNext(u"#B#='Ann'");
  forms_.AnswerNext(u"");
  EXPECT_EQ(Send(u"Hi",
                 [](frmSendSMS& form) {
                   ChooseFilter(form);
                   ChooseFilter(form);
                 })
                .body,
            StandardBody("1,2,9876543210", "Hi", ""));
  EXPECT_EQ(forms_.questions().back().initial, u"#B#='Ann'");
}

class GroupedSendTest : public SendTest {};

TEST_F(GroupedSendTest, RowsWithTheSameNumberBecomeOneMessage) {
  Fill({{Text(u"1"), Text(u"tea")}, {Text(u"2"), Text(u"milk #A#")}, {Text(u"1."), Text(u"cake")}});
  const auto request = Send(u"1 #B#", [](frmSendSMS& form) {
    ChooseGroups(form);
    form.txt_header.UserType(u"Dear all,");
    form.txt_footer.UserType(u"Bye");
  });
  EXPECT_EQ(request.object, "Merrow/SaveExcelData_V2.asp");
  EXPECT_EQ(request.body, RecordsBody("1,2", "%23A%23",
                                      "A%01Dear+all%2C%0D%0A1+tea%0D%0A1+cake%0D%0ABye\x7F"
                                      "A%01Dear+all%2C%0D%0A1+milk+%23A%23%0D%0ABye"));
  EXPECT_EQ(NewAlerts().front().message, u"2 SMS Messages Sent");
}

TEST_F(GroupedSendTest, EveryRowHasItsLineAlsoWhenItIsEmpty) {
  Fill({{Text(u"1"), {}}, {Text(u"1"), Text(u"b")}, {Text(u"1"), {}}});
  EXPECT_EQ(Send(u"#B#", ChooseGroups).body, RecordsBody("1", "%23A%23", "A%01%0D%0Ab%0D%0A"));
}

TEST_F(GroupedSendTest, LengthIsThatOfTheWholeMessage) {
  Fill({{Text(u"2")}, {Text(u"1")}, {Text(u"1")}});
  forms_.AnswerNext(Answer::kOk);
  EXPECT_THAT(Send(Text(80, u'x'), ChooseGroups).body, HasSubstr("&IsConcatSMS=1"));  // 80 + 2 + 80
  EXPECT_THAT(ToUtf8(forms_.questions().back().prompt), HasSubstr("for the row(2). "));
  EXPECT_THAT(Send(Text(79, u'x'), ChooseGroups).body, HasSubstr("&IsConcatSMS=0"));
}

}  // namespace
}  // namespace quorvel
