#include "send/number_list.h"

#include <gtest/gtest.h>

#include <random>

#include "send_fixture.h"

namespace quorvel {
namespace {

// Against a search of the whole list: numbers of mixed lengths over few different characters, some with
// commas, so that they lie inside of each other, across the joints and at both ends.
TEST(NumberList, ContainsWhatOccursAnywhereInTheJoinedList) {
  std::mt19937 random(4711);
  const auto up_to = [&](int last) { return std::uniform_int_distribution<int>(0, last)(random); };
  for (int round = 0; round < 60; ++round) {
    const int longest = round % 10 == 0 ? 80 : 2 + round % 7;
    const TextView alphabet = round % 2 == 0 ? TextView(u"12") : TextView(u"12,");
    const auto number = [&] {
      Text text(static_cast<std::size_t>(1 + up_to(longest - 1)), u'1');
      for (char16_t& unit : text)
        unit = alphabet[static_cast<std::size_t>(up_to(static_cast<int>(alphabet.size()) - 1))];
      return text;
    };
    NumberList list;
    Text joined;
    std::size_t commas = 0;
    for (int i = 0; i < 150; ++i) {
      const Text asked = number();
      ASSERT_EQ(list.Contains(asked), joined.find(asked) != Text::npos)
          << ToUtf8(asked) << " in " << ToUtf8(joined);
      if (up_to(2) == 0) continue;  // asked for only
      list.Add(asked);
      if (i > 0 && !joined.empty()) joined += u',';
      joined += asked;
      commas = static_cast<std::size_t>(std::count(joined.begin(), joined.end(), u','));
    }
    EXPECT_EQ(list.joined(), joined);
    EXPECT_EQ(list.parts(), commas + 1);
  }
}

using DuplicatesTest = SendTest;

TEST_F(DuplicatesTest, ASkippedRowLeavesNoTraceInTheOtherLists) {
  Fill({{9198765432.0, Text(u"a"), Text(u"a@x")},
        {Text(u"98765432"), Text(u"b"), Text(u"b@x")},      // the tail of the first
        {Text(u"91-9876 5432"), Text(u"c"), Text(u"c@x")},  // the first, written otherwise
        {Text(u"198765432"), Text(u"d"), Text(u"d@x")},     // its middle
        {Text(u"2,9"), Text(u"e"), Text(u"e@x")},
        {Text(u"9198765433"), Text(u"f"), Text(u"f@x")}});
  const auto with_copies = [](frmSendSMS& form) {
    form.cmdEmailPanel.UserPress();
    form.Chk_SendEmail.UserSet(true);
    form.txtEmailSubject.UserType(u"S");
    form.Combo_EmailColumn.UserSelect(3);
  };
  EXPECT_EQ(Send(u"#B#",
                 [&](frmSendSMS& form) {
                   with_copies(form);
                   ChooseNoDuplicates(form);
                 })
                .body,
            StandardBody("9198765432,2,9,9198765433", "%23B%23",
                         "B%01a\x7F"
                         "B%01e\x7F"
                         "B%01f",
                         "&IsConcatSMS=0&sendEmail=1&EmailSubject=S&EmailAdresses=a%40x%2Ce%40x%2Cf%40x"
                         "&FromEmailID=&FromEmailPwd="));
  EXPECT_EQ(NewAlerts().front().message, u"3 SMS Messages Sent");

  // The option is kept, so a longer number after its part is asked for here: it is none that was seen.
  Fill({{Text(u"1")}, {Text(u"11")}, {Text(u"1")}, {Text(u"2")}, {Text(u"1,2")}, {Text(u"21")}});
  EXPECT_EQ(Send(u"Hi").body, StandardBody("1,11,2,21", "Hi", ""));
}

}  // namespace
}  // namespace quorvel
