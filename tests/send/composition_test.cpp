#include "send/composition.h"

#include <gmock/gmock.h>

#include "send_fixture.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CompositionTest : public SendTest {
 protected:
  // The numbers of a send to the sheet's rows.
  std::string Numbers(const User& options = {}) {
    const std::string body = Send(u"Hi", options).body;
    const std::size_t start = std::string_view("mobilenumber=").size();
    return body.substr(start, body.find('&') - start);
  }
  // The cell data of a send of `message`.
  std::string Cells(TextView message, const User& options = {}) {
    const std::string body = Send(message, options).body;
    const std::size_t start = body.find("&MMCellData=") + std::string_view("&MMCellData=").size();
    return body.substr(start, body.find("&user=") - start);
  }
};

TEST(Placeholders, AreOneLetterBetweenTwoMarks) {
  struct Row {
    TextView message;
    std::u16string columns;
  };
  for (const auto& [message, columns] :
       {Row{u"", u""}, Row{u"#", u""}, Row{u"no # here", u""}, Row{u"#B#", u"B"}, Row{u"# B #", u"B"},
        Row{u"#AB#", u""}, Row{u"#AB#B#", u"B"}, Row{u"#A#B#", u"A"}, Row{u"#A##B#", u"AB"},
        Row{u"##B#", u"B"}, Row{u"##", u""}, Row{u"#B# #C# #B#", u"BCB"}, Row{u"50# off #B#", u"B"},
        Row{u"#z#Z#z#", u"zz"}, Row{u"#B", u""}, Row{u"# # #B#", u"B"}, Row{u"#\tB#", u""}}) {
    const std::vector<char16_t> found = ScanPlaceholders(message);
    EXPECT_EQ(Text(found.begin(), found.end()), columns) << ToUtf8(message);
  }
}

// What a sheet makes of a phone number is what people are charged for.
TEST_F(CompositionTest, NumbersAreCleanedOfDotsHyphensAndBlanksOnly) {
  struct Row {
    CellValue value;
    std::string_view number;
  };
  const Row rows[] = {{9.876543211E9, "9876543211"},
                      {447700900123.0, "447700900123"},
                      {123456789012345.0, "123456789012345"},
                      {1234567890123456.0, "123456789012346E+15"},
                      {Text(u"1234567890123456"), "1234567890123456"},
                      {9876543211.5, "98765432115"},
                      {Text(u"9.876543211E9"), "9876543211E9"},
                      {Text(u"00447700900123"), "00447700900123"},
                      {Text(u" +44 (7700) 900-123. "), "+44(7700)900123"},
                      {Text(u"98765\u00A043210\t"),
                       "98765\xA0"
                       "43210\t"},
                      {Text(u"#N/A"), "#N/A"},
                      {true, "True"},
                      {Date{45352}, "3/1/2024"},
                      {-9876543211.0, "9876543211"}};
  for (const auto& [value, number] : rows) {
    const bool is_text = std::holds_alternative<Text>(value);
    is_text ? sheet().Set({u"A", 1}, value)
            : sheet().Set({u"A", 1}, value, u"9");  // shown otherwise than it is
    EXPECT_EQ(Numbers([](frmSendSMS& form) {
                form.optRowRange.UserChoose();
                form.txtStartRow.UserType(u"1");
                form.txtEndRow.UserType(u"1");
              }),
              number);
  }
}

TEST_F(CompositionTest, TheCountryCodeGoesBeforeValuesOfTheChosenLength) {
  struct Row {
    int length;
    TextView code;
    std::string_view numbers;
  };
  Fill(
      {{9876543210.0}, {Text(u"98765 43210")}, {Text(u"98765-4321")}, {Text(u"098765432100")}, {Text(u"-")}});
  for (const auto& [length, code, numbers] :
       {Row{10, u"+44", "+449876543210,9876543210,+44987654321,098765432100"},
        Row{11, u"44", "9876543210,449876543210,987654321,098765432100"},
        Row{12, u"0-0 1.", "9876543210,9876543210,987654321,001098765432100"},
        Row{1, u"49", "9876543210,9876543210,987654321,098765432100,49"},
        Row{0, u"49", "9876543210,9876543210,987654321,098765432100"}}) {
    const auto choose = [&, chosen = length, prefix = code](frmSendSMS& form) {
      form.chkAddCountryCode.UserSet(true);
      form.txtCountryCode.UserType(prefix);
      form.ComboCountryCodeLength.UserSelect(chosen);
    };
    EXPECT_EQ(Numbers(choose), numbers) << length;
  }
  EXPECT_EQ(Numbers([](frmSendSMS& form) { form.txtCountryCode.UserType(u"44"); }),
            "9876543210,9876543210,987654321,098765432100");
}

TEST_F(CompositionTest, RowsWithoutANumberArePassedOverAndCountForNothing) {
  Fill({{Text(u"Mobile"), Text(u"Name")},  // a heading
        {Text(u"1"), Text(u"a")},
        {{}, Text(u"b")},
        {Text(u" .- "), Text(u"c")},
        {Text(u"x"), Text(u"d")},  // beyond row 1 a number is what the cell holds
        {Text(u"2"), Text(u"e")}});
  EXPECT_EQ(Send(u"#B#").body, StandardBody("1,x,2", "%23B%23",
                                            "B%01a\x7F"
                                            "B%01d\x7F"
                                            "B%01e"));
  EXPECT_EQ(NewAlerts().front().message, u"3 SMS Messages Sent");
  EXPECT_EQ(Numbers([](frmSendSMS& form) {
              form.optRows.UserChoose();
              form.txtRows.UserType(u"1-2");
            }),
            "Mobile,1");
}

TEST_F(CompositionTest, AnEmptyColumnIsToldAndAnErrorValueStopsTheSendAtItsRow) {
  sheet().Set({u"B", 3}, Text(u"x"));
  ExpectNotSent(u"Hi");
  EXPECT_THAT(
      NewAlerts(),
      ElementsAre(Alert{u"0 SMS Messages Sent\r\nThere are no Mobilenumbers available in specified colum.",
                        kInformation, Text(kSendTitle)}));
  EXPECT_EQ(focus_, "cmbMobileNumbersCell");

  Fill({{Text(u"1")}, {CellError{2042}}});
  ExpectNotSent(u"Hi");
  const std::vector<Alert> alerts = NewAlerts();
  ASSERT_EQ(alerts.size(), 1U);
  EXPECT_EQ(alerts[0].title, u"Error");
  EXPECT_THAT(ToUtf8(alerts[0].message), HasSubstr("(row 2)"));
}

TEST_F(CompositionTest, CellsTravelAsTheyAreShownWithoutTheRowsOwnMarks) {
  Fill({{Text(u"1"), 0.5, Text(u"a\u0001b\u0002c\u007Fd")}, {Text(u"2"), {}, Text(u"50# of #B#")}});
  sheet().Set({u"B", 1}, 0.5, u"50,0 %");
  sheet().Set({u"D", 1}, CellError{2007});
  sheet().Set({u"D", 2}, Date{45352.5}, u"01.03.24\r\n\u20AC \u4E2D");
  EXPECT_EQ(Send(u"#B##C# #D##B#").body,
            StandardBody("1,2", "%23B%23%23C%23+%23D%23%23B%23",
                         "B%0150%2C0+%25%02C%01ab%02cd%02D%01%23DIV%2F0%21%02B%0150%2C0+%25\x7F"
                         "B%01%02C%0150%23+of+%23B%23%02D%0101%2E03%2E24%0D%0A%80+%3F%02B%01"));
}

TEST_F(CompositionTest, PlaceholdersOfAnyWritingTravel) {
  Fill({{Text(u"1"), Text(u"x")}});
  EXPECT_EQ(Cells(u"# B #!"), "B%01x");
  EXPECT_EQ(Cells(u"#b#!"), "b%01x");
  EXPECT_EQ(Cells(u"#Z#!"), "Z%01");
  EXPECT_EQ(Cells(u"#BB# #!"), "");
}

// What is merged decides on length and emptiness, not the template.
TEST_F(CompositionTest, PersonalisedTextsAreFilledColumnByColumn) {
  const std::vector<CellText> cells = {{u'B', u"[#C#]"}, {u'C', u"c#B#"}, {u'B', u"[#C#]"}};
  EXPECT_EQ(Personalise(u"#B# #C# #c# # B #", cells), u"[c[#C#]] c[#C#] #c# # B #");
  EXPECT_EQ(Personalise(u"##B##", {{u'B', u""}}), u"##");
}

}  // namespace
}  // namespace quorvel
