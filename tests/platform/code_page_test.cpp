#include "platform/code_page.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(Windows1252, MapsEveryByteThereAndBack) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  const Text text = Windows1252().Decode(bytes);
  EXPECT_EQ(Windows1252().Encode(text), bytes);
  EXPECT_EQ(text.substr(0x7F, 5), u"\u007F\u20AC\u0081\u201A\u0192");
  EXPECT_EQ(text.substr(0x9D, 5), u"\u009D\u017E\u0178\u00A0\u00A1");
}

TEST(Windows1252, TakesTheBestFit) {
  struct Fit {
    TextView text;
    std::string_view bytes;
  };
  constexpr Fit kCases[] = {
      {u"\u0100\u0104\u0141\u0142\u0130\u0131\u011E", "AALlIiG"},
      {u"\u2010\u2011\u2212\u2032", "---'"},
      {u"\u2002\u2003\u2044\u2215\u2217\u0302", "  //*^"},
      {u"\u0393\u03A9\u03B1\u03B2\u03BC\u03C0", "GOa\xDF\xB5p"},
      {u"\u221E\u2248\u0301", "8\x98\xB4"},
      {u"\uFF10\uFF19\uFF21\uFF5A", "09Az"},
  };
  for (const auto& [text, bytes] : kCases) EXPECT_EQ(Windows1252().Encode(text), bytes) << ToUtf8(text);
}

TEST(Windows1252, WritesAQuestionMarkForEachUnitItLacks) {
  EXPECT_EQ(Windows1252().Encode(u"\u0080\u009F"), "??");
  EXPECT_EQ(Windows1252().Encode(u"\u2012\u2033\u200B\u0391\uFFFD\uFFFF"), "??????");
  EXPECT_EQ(Windows1252().Encode(u"aПб中z"), "a???z");
  EXPECT_EQ(Windows1252().Encode(u"\U0001F600."), "??.");
}

}  // namespace
}  // namespace quorvel
