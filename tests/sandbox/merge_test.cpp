#include "sandbox/merge.h"

#include <gtest/gtest.h>

#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

std::optional<Text> Plain(std::string_view bytes) {
  return FromWire(bytes);
}

Text Merge(TextView text, const RowValues& row) {
  return MergeTemplate(text).Merge(row);
}

TEST(Merge, ReplacesPlaceholdersAsTheClientScansThem) {
  const RowValues row = {{u'A', u"one"}, {u'B', u"two"}};
  EXPECT_EQ(Merge(u"#A##B##A#", row), u"onetwoone");
  EXPECT_EQ(Merge(u"# B #|#  B#", row), u"two|two");
  EXPECT_EQ(Merge(u"#AB#B#", row), u"#ABtwo");  // goes on behind the first "#"
  EXPECT_EQ(Merge(u"#A#B#", row), u"oneB#");    // goes on behind the second "#"
  EXPECT_EQ(Merge(u"##B##", row), u"#two#");
  EXPECT_EQ(Merge(u"5# off, # B", row), u"5# off, # B");
  EXPECT_EQ(Merge(u"#b# # # #", row), u"#b# # # #");
  EXPECT_EQ(Merge(u"", row), u"");
}

TEST(Merge, KeepsPlaceholdersWithoutValueAndDoesNotScanValues) {
  EXPECT_EQ(Merge(u"a # C # #A#", {{u'A', u"#C#"}, {u'B', u"x"}}), u"a # C # #C#");
  EXPECT_EQ(Merge(u"#A##", {{u'A', u"#"}}), u"##");
}

TEST(Merge, RowIsSegmentsOfLetterAndValue) {
  EXPECT_EQ(ReadRow("", Plain), RowValues());
  EXPECT_EQ(ReadRow("B%01a+b%2B%02C%01%26%3D%02B%01", Plain),
            (RowValues{{u'B', u"a b+"}, {u'C', u"&="}, {u'B', u""}}));
  EXPECT_EQ(ReadRow("B%01%80", Plain), (RowValues{{u'B', u"\u20ac"}}));
}

TEST(Merge, SeparatorInsideAValueBelongsToIt) {
  EXPECT_EQ(ReadRow("B%01x%02y%02", Plain), (RowValues{{u'B', u"x\x02y\x02"}}));
  EXPECT_EQ(ReadRow("B%01x%02C%02C%01y", Plain), (RowValues{{u'B',
                                                             u"x\x02"
                                                             u"C"},
                                                            {u'C', u"y"}}));
  EXPECT_EQ(ReadRow("B%01x%02%02C%01y", Plain), (RowValues{{u'B', u"x\x02"}, {u'C', u"y"}}));
  EXPECT_EQ(ReadRow("B%01x%025%01y", Plain), (RowValues{{u'B',
                                                         u"x\x02"
                                                         u"5\x01y"}}));
}

TEST(Merge, MalformedRowsAreRefused) {
  for (const char* row : {"B", "value", "5%01x", "%02B%01x", "%01x"}) {
    EXPECT_FALSE(ReadRow(row, Plain)) << row;
  }
  EXPECT_FALSE(ReadRow("B%010041%02C%01004", FromHexText));
  EXPECT_EQ(ReadRow("B%0106270041", FromHexText), (RowValues{{u'B', u"\u0627A"}}));
}

TEST(Merge, SmsCountAtItsLimits) {
  EXPECT_EQ(SmsCount(0, false), 1);
  EXPECT_EQ(SmsCount(160, false), 1);
  EXPECT_EQ(SmsCount(161, false), 2);
  EXPECT_EQ(SmsCount(306, false), 2);
  EXPECT_EQ(SmsCount(307, false), 3);
  EXPECT_EQ(SmsCount(70, true), 1);
  EXPECT_EQ(SmsCount(71, true), 2);
  EXPECT_EQ(SmsCount(134, true), 2);
  EXPECT_EQ(SmsCount(135, true), 3);
}

}  // namespace
}  // namespace quorvel::sandbox
