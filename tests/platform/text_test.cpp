#include "platform/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Trim, TakesBlanksOnly) {
  EXPECT_EQ(Trim(u"  a b  "), u"a b");
  EXPECT_EQ(Trim(u" \ta\r\n "), u"\ta\r\n");
  EXPECT_EQ(Trim(u"\u00A0a\u3000"), u"\u00A0a\u3000");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u""), u"");
}

TEST(Split, KeepsEmptyPartsButGivesNoneForEmptyText) {
  EXPECT_THAT(Split(u"a,,b,", u","), ElementsAre(u"a", u"", u"b", u""));
  EXPECT_THAT(Split(u",", u","), ElementsAre(u"", u""));
  EXPECT_THAT(Split(u"abc", u","), ElementsAre(u"abc"));
  EXPECT_THAT(Split(u"", u","), IsEmpty());
}

TEST(Split, MatchesLongDelimitersLeftToRight) {
  EXPECT_THAT(Split(u"a\r\n\r\nb\r", u"\r\n"), ElementsAre(u"a", u"", u"b\r"));
  EXPECT_THAT(Split(u"x---y", u"--"), ElementsAre(u"x", u"-y"));
}

TEST(Replace, ScansOnceWithoutOverlap) {
  EXPECT_EQ(Replace(u"xxxxx", u"xx", u"y"), u"yyx");
  EXPECT_EQ(Replace(u"a'b'", u"'", u"''"), u"a''b''");
  EXPECT_EQ(Replace(u"##a##", u"##", u"#"), u"#a#");
  EXPECT_EQ(Replace(u"abc", u"b", u""), u"ac");
  EXPECT_EQ(Replace(u"aBb", u"b", u"x"), u"aBx");
  EXPECT_EQ(Replace(u"abc", u"", u"x"), u"abc");
  EXPECT_EQ(Replace(u"", u"a", u"x"), u"");
}

TEST(Remove, DropsEveryListedUnit) {
  EXPECT_EQ(Remove(u"+44 (0) 7700-900", u"+-() "), u"4407700900");
  EXPECT_EQ(Remove(u"abc", u""), u"abc");
  EXPECT_EQ(Remove(u"---", u"-"), u"");
}

TEST(UpperCase, MapsUnitByUnit) {
  EXPECT_EQ(UpperCase(u"straße_aZ09[`{"), u"STRAßE_AZ09[`{");
  EXPECT_EQ(UpperCase(u"éýþÿ÷"), u"ÉÝÞŸ÷");
  EXPECT_EQ(UpperCase(u"āıĳĸńŉŋźž"), u"ĀıĲĸŃŉŊŹŽ");
  EXPECT_EQ(UpperCase(u"άίΰας\u03CDώϐ"), u"ΆΊΰΑΣ\u038EΏϐ");
  EXPECT_EQ(UpperCase(u"яёџҁӂӏӱ"), u"ЯЁЏҀӁӀӰ");
  EXPECT_EQ(UpperCase(u"աֆև"), u"ԱՖև");
  EXPECT_EQ(UpperCase(u"ơưșț\u1EBF\uFF41\uFF5A"), u"ƠƯȘȚ\u1EBE\uFF21\uFF3A");
}

TEST(Utf8, ConvertsEveryLengthBothWays) {
  const Text text = u"A\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF";
  const std::string bytes = "A\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  EXPECT_EQ(ToUtf8(text), bytes);
  EXPECT_EQ(FromUtf8(bytes), text);
  EXPECT_EQ(FromUtf8(std::string_view("a\0b", 3)), Text(u"a\0b", 3));
}

TEST(Utf8, ReplacesUnpairedSurrogates) {
  EXPECT_EQ(ToUtf8(u"a\xD800"), "a\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(u"\xD800\xD83D\xDE00"), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
  EXPECT_EQ(ToUtf8(u"\xDE00z"), "\xEF\xBF\xBDz");
}

TEST(Utf8, ReplacesBrokenSequencesAndGoesOn) {
  EXPECT_EQ(FromUtf8("\x80z"), u"\uFFFDz");
  EXPECT_EQ(FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");                        // overlong
  EXPECT_EQ(FromUtf8("\xE0\x9F\xBF"), u"\uFFFD\uFFFD\uFFFD");              // overlong
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");              // surrogate
  EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80z"), u"\uFFFD\uFFFD\uFFFD\uFFFDz");  // beyond U+10FFFF
  EXPECT_EQ(FromUtf8("\xF0\x9F\x98z"), u"\uFFFDz");                        // cut short
  EXPECT_EQ(FromUtf8("\xE2\x82"), u"\uFFFD");
  EXPECT_EQ(FromUtf8("\xC3\xC3\xA9"), u"\uFFFDé");
}

}  // namespace
}  // namespace quorvel
