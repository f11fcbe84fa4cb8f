#include "send/row_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Rows = std::vector<std::int32_t>;

RowChoice List(TextView list) {
  return {RowChoice::Kind::kList, {}, {}, Text(list)};
}

TEST(RowSelection, AListIsWalkedAsWritten) {
  struct Row {
    TextView list;
    Rows rows;
  };
  for (const auto& [list, rows] :
       {Row{u"5", {5}}, Row{u"5-5", {5}}, Row{u"2-4, 3-5", {2, 3, 4, 3, 4, 5}}, Row{u"9-3, 7", {7}},
        Row{u"8, 2 - 3 ,8", {8, 2, 3, 8}}, Row{u"7-2147483647", {7, 8, 9, 10}}, Row{u"11, 4000000", {}},
        Row{u"1, x, 3", {1}}, Row{u"1, 2-", {1}}, Row{u"1, 2-3-4, 5", {1}}, Row{u"1,,2", {1}},
        Row{u"3, 99999999999", {3}}}) {
    const SelectedRows selected = SelectRows(List(list), 10);
    EXPECT_EQ(selected.fault, SelectedRows::Fault::kNone) << ToUtf8(list);
    EXPECT_EQ(selected.rows, rows) << ToUtf8(list);
  }
}

TEST(RowSelection, StartAndEndRowAreBothSent) {
  const auto rows = [](TextView start, TextView end) {
    return SelectRows({RowChoice::Kind::kStartToEnd, Text(start), Text(end), {}}, 10).rows;
  };
  EXPECT_THAT(rows(u" 9 ", u"10"), ElementsAre(9, 10));
  EXPECT_THAT(rows(u"10", u"10"), ElementsAre(10));
  EXPECT_THAT(rows(u"9", u"2147483647"), ElementsAre(9, 10));
  EXPECT_THAT(rows(u"11", u"12"), IsEmpty());
  EXPECT_THROW(rows(u"1", u"2147483648"), RuntimeError);
}

using RowListTest = SendTest;

TEST_F(RowListTest, AListAtFaultSendsNothing) {
  struct Row {
    TextView list, message;
  };
  FillNumbers(3);
  for (const Row& row :
       {Row{u"0-10", u"Invalid format in row range of rows"},
        Row{u"0", u"Invalid format in row range of rows"}, Row{u"  ", u"Invalid format in row range of rows"},
        Row{u"abc", u"Invalid format at first row"}, Row{u"-5", u"Invalid format at first row"},
        Row{u"3-1", u"Invalid format at first row"}}) {
    ExpectNotSent(u"Hi", [&](frmSendSMS& form) {
      form.optRows.UserChoose();
      form.txtRows.UserType(row.list);
    });
    EXPECT_THAT(NewAlerts(), ElementsAre(Alert{Text(row.message), kCritical, Text(kSendTitle)}))
        << ToUtf8(row.list);
    EXPECT_EQ(focus_, "txtRows");
  }
}

TEST_F(RowListTest, EveryWayOfChoosingRowsReachesTheWire) {
  struct Row {
    SendTest::User choose;
    std::string_view numbers;
  };
  FillNumbers(4);
  for (const auto& [choose, numbers] : {Row{{}, "9000000001,9000000002,9000000003,9000000004"},
                                        Row{[](frmSendSMS& form) {
                                              form.optRowRange.UserChoose();
                                              form.txtStartRow.UserType(u" 2");
                                              form.txtEndRow.UserType(u"3 ");
                                            },
                                            "9000000002,9000000003"},
                                        Row{[](frmSendSMS& form) {
                                              form.optRows.UserChoose();
                                              form.txtRows.UserType(u"3-4, 1, 3");
                                            },
                                            "9000000003,9000000004,9000000001,9000000003"}}) {
    EXPECT_EQ(Send(u"Hi", choose).body, StandardBody(numbers, "Hi", ""));
  }
}

}  // namespace
}  // namespace quorvel
