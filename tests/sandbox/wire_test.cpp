#include <gtest/gtest.h>

#include <random>

#include "sandbox/form.h"
#include "sandbox/records.h"
#include "sandbox/scramble.h"
#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

// The client's side of the scramble.
std::string Scramble(const std::string& password, int key, int position) {
  std::string shifted;
  const auto length = static_cast<int>(password.size());
  for (int i = 1; i <= length; ++i) {
    if (i == position) shifted += static_cast<char>(key);
    const auto code = static_cast<unsigned char>(password[static_cast<std::size_t>(i - 1)]);
    shifted += static_cast<char>(code + key + (length - i));
  }
  return shifted + static_cast<char>(position);
}

TEST(Scramble, IsUndoneForEveryPositionAndKey) {
  for (const std::string password : {"a", "demo", "p&s=+%w", "pa\xD0sword\x7f", "\x01\x02\x03"}) {
    for (int position = 1; position <= static_cast<int>(password.size()); ++position) {
      for (int key = 1; key <= 20; ++key) {
        EXPECT_EQ(UndoScramble(Scramble(password, key, position)), password) << position << " " << key;
      }
    }
  }
  EXPECT_EQ(UndoScramble("\x01"), "");
}

TEST(Scramble, RefusesWhatNoPasswordGives) {
  using std::string_literals::operator""s;
  for (const std::string& bytes :
       {""s, "\x02"s, "ab"s, "\x05"s, "zz\x01\x03"s, "abc\x00"s, "\x09\x08\x01"s}) {
    EXPECT_FALSE(UndoScramble(bytes)) << ToByteHex(bytes);
  }
}

TEST(Form, ReadsValuesAsTheyTravel) {
  const Form form(
      "a=1&b=x%26y+z&raw=B%01x\x7f"
      "C&a=2&flag&=n&c=%zz%4&d=a=b&");
  EXPECT_EQ(form.Bytes("a"), "1");
  EXPECT_EQ(form.Bytes("b"), "x&y z");
  EXPECT_EQ(form.Raw("raw"),
            "B%01x\x7f"
            "C");
  EXPECT_EQ(form.Bytes("flag"), "");
  EXPECT_EQ(form.Bytes("c"), "%zz%4");
  EXPECT_EQ(form.Bytes("d"), "a=b");
  EXPECT_FALSE(form.Raw("e"));
  EXPECT_EQ(form.Value("b"), u"x&y z");
  EXPECT_EQ(PercentDecode("+91%2C5"), "+91,5");
}

TEST(WireText, AnswersWhatTheCodePageLacksAsQuestionMarks) {
  EXPECT_EQ(ToWire(u"\u20ac\u00e9\u0141\u0627\u2010"), "\x80\xE9???");
  EXPECT_EQ(FromWire("\x80\xE9"), u"\u20ac\u00e9");
  EXPECT_EQ(ToByteHex("A\n\xE9"), "410AE9");
}

TEST(WireText, HexTextIsFourDigitsAUnit) {
  EXPECT_EQ(FromHexText("0041d83dDE00FFFF"), u"A\U0001F600\uFFFF");
  EXPECT_EQ(FromHexText(""), u"");
  for (const char* digits : {"004", "00410", "00G1", "+041", "0x41", " 041"}) {
    EXPECT_FALSE(FromHexText(digits)) << digits;
  }
}

TEST(Records, EscapeTheirSeparators) {
  RecordList list;
  EXPECT_EQ(list.Reply(), "<SMS>0</SMS>");
  list.Add({"A", "B"});
  list.Add({"1,2", "x-y\x80~"});
  EXPECT_EQ(list.Reply(),
            "<SMS>A-B,1\x80"
            "2-x~y?~</SMS>");
}

}  // namespace
}  // namespace quorvel::sandbox
