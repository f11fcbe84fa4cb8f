#include "send/rtf_text.h"

#include <gtest/gtest.h>

#include "send/rtf_code_pages.h"

namespace quorvel {
namespace {

constexpr TextView kDigits = u"0123456789ABCDEF";

Text HexOf(TextView text) {
  Text hex;
  for (const char16_t unit : text) {
    for (const int shift : {12, 8, 4, 0}) hex.push_back(kDigits[(unit >> shift) & 0xF]);
  }
  return hex;
}

constexpr TextView kHeader =
    uR"({\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0\fnil\fcharset0 MS Sans Serif;})"
    uR"({\f1\fnil\fcharset178 Arial;}{\f2\fnil\fcharset134 SimSun;}{\f3\fnil\fcharset128 \'82\'6c Gothic;})"
    uR"({\f4\fnil\fcharset204{\*\fname Arial;}Arial Cyr;}{\f5\fnil\fcharset1 Tahoma;})"
    uR"({\f10\fnil\fcharset161 X;}})"
    u"\r\n"
    uR"({\colortbl ;\red255\green0\blue0;}{\*\generator Msftedit 5.41.21.2510;}\viewkind4\uc1)";

// A document whose body is `body`, closed as a box closes it, NUL included.
Text Document(TextView body) {
  return Text(kHeader) + Text(body) + uR"(\par })" + u"\r\n" + Text(1, u'\0');
}

struct Case {
  TextView body;
  TextView shown;
  bool unicode_mode;
};

void Check(const Case& expected) {
  SCOPED_TRACE(ToUtf8(expected.body));
  bool unicode_mode = false;
  EXPECT_EQ(CONVERT_RTF_Hex(Document(expected.body), unicode_mode), HexOf(expected.shown));
  EXPECT_EQ(unicode_mode, expected.unicode_mode);
}

TEST(RtfText, PlainTextAndItsMarkup) {
  const Case cases[] = {
      {uR"(\pard\lang1033\f0\fs17 Hello  you)", u"Hello  you", false},
      {uR"(\pard\fs17  a\\b\{c\}d\|)", u" a\\b{c}d", true},
      {uR"(\pard\b\fs20 bold\b0\i0  and{\cf1\ul red}\ulnone .)", u"bold andred.", false},
      {uR"(\pard\f0\fs170 x\lang1033\fs17 17)", u"x17", false},
      {uR"(\pard\fs17)", u"", false},
      {uR"(\pard\fs17 shown\v hidden\v0  again\v  x\plain\f0\fs17 end)",
       u"shown again"
       u"end",
       false},
      {uR"(\pard a\~b\_c\endash\bullet d\-e\ldblquote f\rdblquote)",
       u"a\u00A0b\u2011c\u2013\u2022de\u201Cf\u201D", true},
  };
  for (const Case& expected : cases) Check(expected);
}

TEST(RtfText, LineEndsButTheBoxsOwn) {
  const Case cases[] = {
      {uR"(\pard\fs17 one\par two\line three\par)"
       u"\r\n\\par\r\nfour\r\n",
       u"one\r\ntwo\r\nthree\r\n\r\nfour", false},
      {uR"(\pard\fs17 one\par \par )", u"one\r\n\r\n", false},
      {uR"(\pard\fs17 {\b one\par }two\tab three)", u"one\r\ntwo\tthree", false},
      {uR"(\pard\fs17 end\line )", u"end\r\n", false},
  };
  for (const Case& expected : cases) Check(expected);
  bool unicode_mode = false;
  EXPECT_EQ(CONVERT_RTF_Hex(uR"({\rtf1\ansi\fs17 no last paragraph})", unicode_mode),
            HexOf(u"no last paragraph"));
}

TEST(RtfText, EscapedBytesAreReadInTheCodePageOfTheirFont) {
  const Case cases[] = {
      {uR"(\pard\f0\fs17 caf\'e9 \'80)", u"caf\u00E9 \u20AC", true},
      {uR"(\pard\lang1025\f1\rtlch\fs17\'e3\'d1\'cd\'c8\'c7 \lang1033\f0\ltrch\fs17 Sam)",
       u"\u0645\u0631\u062D\u0628\u0627 Sam", true},
      {uR"(\pard\rtlpar\qr\lang14337\f1\fs17\'e3{\f0\'e3}\'e3\lang1033\f10\'e3)", u"\u0645\u00E3\u0645\u03B3",
       true},
      {uR"(\pard\lang1049\f4\fs17\'cf\'F0\f5\'e9\f99\'e9\plain\'e9)", u"\u041F\u0440\u00E9\u00E9\u00E9",
       true},
      {uR"(\pard\lang3076\f2\fs17\'c4\'e3\'ba\'c3\f0 !)", u"\u4F60\u597D!", true},
      {uR"(\pard\f3\fs17\'83e\'83\'58\'83\\\'b1)", u"\u30C6\u30B9\u30BD\uFF71", true},
  };
  for (const Case& expected : cases) Check(expected);
}

TEST(RtfText, UnitsStandForTheirFallback) {
  const Case cases[] = {
      {uR"(\pard\f0\fs17 \u1605?\u1585\'d1x)", u"\u0645\u0631x", true},
      {uR"(\pard\f2\fs17\uc2\u20320\'c4\'e3\u22909\'ba\'c3\uc1 .)", u"\u4F60\u597D.", true},
      {uR"(\pard\fs17\u-10179?\u-8704?\u65279?)", u"\U0001F600\uFEFF", true},
      {uR"(\pard\fs17{\uc0\u8364 5}\u8364 5 6)",
       u"\u20AC"
       u"5\u20AC 6",
       true},
      {uR"(\pard\fs17{\u8364}5\u8364\par 6\u8364\emdash 7)",
       u"\u20AC"
       u"5\u20AC\r\n6\u20AC"
       u"7",
       true},
      {uR"(\pard\fs17\u233?)", u"\u00E9", false},
      {uR"(\pard\fs17\u233\'e9)", u"\u00E9", true},
  };
  for (const Case& expected : cases) Check(expected);
}

TEST(RtfText, WhatIsNoTextStaysOut) {
  const Case cases[] = {
      {uR"(\pard{\pntext\f1\'B7\tab}{\*\pn\pnlvlblt{\pntxtb\'B7}}item)", u"item", false},
      {uR"(\pard a{\pict\wmetafile8 0100{\b 09}00}{\info{\author me}}{\stylesheet{\s0 Normal;}}b)", u"ab",
       false},
      {uR"(\pard a{\pict\bin3 {{{}b)", u"ab", false},
      {uR"(\pard{\field{\*\fldinst{HYPERLINK "http://x"}}{\fldrslt{link}}})", u"link", false},
  };
  for (const Case& expected : cases) Check(expected);
}

TEST(RtfText, BrokenRtfGivesWhatCanBeRead) {
  const auto read = [](TextView rtf) {
    bool unicode_mode = false;
    return CONVERT_RTF_Hex(rtf, unicode_mode);
  };
  EXPECT_EQ(read(u""), u"");
  EXPECT_EQ(read(u"no rtf"), HexOf(u"no rtf"));
  EXPECT_EQ(read(uR"({\rtf1 a}b)"), HexOf(u"a"));
  EXPECT_EQ(read(uR"({\rtf1 a\)"), HexOf(u"a"));
  EXPECT_EQ(read(uR"({\rtf1 a\')"), HexOf(u"a"));
  EXPECT_EQ(read(uR"({\rtf1 a\'4)"), HexOf(u"a4"));
  EXPECT_EQ(read(uR"({\rtf1 a\'zz)"), HexOf(u"azz"));
  EXPECT_EQ(read(uR"({\rtf1\uc99999999999999 a\bin99999999999 b)"), HexOf(u"a"));
  EXPECT_EQ(read(uR"({\rtf1\ansicpg950 \'a4)"), HexOf(u"\uFFFD"));
  EXPECT_EQ(read(uR"({\rtf1\u8364{5}})"), HexOf(u"\u20AC"
                                                u"5"));
  EXPECT_EQ(read(uR"({\rtf1{\fonttbl{\f0\fcharset134;}}\f0\'c4\par\'c4\'0ax\'c4})"),
            HexOf(u"\uFFFD\r\n\uFFFDx\uFFFD"));
}

TEST(RtfText, AFlagThatIsSetStaysSet) {
  bool unicode_mode = true;
  EXPECT_EQ(CONVERT_RTF_Hex(Document(u"a"), unicode_mode), u"0061");
  EXPECT_TRUE(unicode_mode);
}

TEST(RtfCodePages, EveryCharsetLeadsToItsCharacters) {
  struct Sample {
    int charset;
    unsigned char byte;
    char16_t character;
  };
  for (const Sample& sample : {Sample{0, 0x80, u'\u20AC'},
                               {161, 0xE1, u'\u03B1'},
                               {162, 0xFE, u'\u015F'},
                               {163, 0xFE, u'\u20AB'},
                               {177, 0xE0, u'\u05D0'},
                               {178, 0xC8, u'\u0628'},
                               {186, 0xE0, u'\u0105'},
                               {204, 0xFF, u'\u044F'},
                               {222, 0xA1, u'\u0E01'},
                               {238, 0xB3, u'\u0142'},
                               {128, 0xDF, u'\uFF9F'},
                               {134, 0x80, u'\u20AC'}}) {
    SCOPED_TRACE(sample.charset);
    ASSERT_TRUE(CodePageOfCharset(sample.charset));
    EXPECT_EQ(DecodeByte(*CodePageOfCharset(sample.charset), sample.byte), sample.character);
  }
  EXPECT_EQ(CodePageOfCharset(1), std::nullopt);
}

TEST(RtfCodePages, DoubleByteTablesAreRightFromEndToEnd) {
  EXPECT_EQ(DecodePair(932, 0x81, 0x40), u'\u3000');
  EXPECT_EQ(DecodePair(932, 0x8A, 0xBF), u'\u6F22');
  EXPECT_EQ(DecodePair(932, 0xFC, 0x4B), u'\u9ED1');
  EXPECT_EQ(DecodePair(936, 0x81, 0x40), u'\u4E02');
  EXPECT_EQ(DecodePair(936, 0xD6, 0xD0), u'\u4E2D');
  EXPECT_EQ(DecodePair(936, 0xFE, 0x4F), u'\uFA29');
  EXPECT_EQ(DecodePair(949, 0x81, 0x41), u'\uAC02');
  EXPECT_EQ(DecodePair(949, 0xB0, 0xA1), u'\uAC00');
  EXPECT_EQ(DecodePair(949, 0xFD, 0xFE), u'\u8A70');
  EXPECT_EQ(DecodePair(950, 0xA1, 0x40), u'\u3000');
  EXPECT_EQ(DecodePair(950, 0xA4, 0xA4), u'\u4E2D');
  EXPECT_EQ(DecodePair(950, 0xF9, 0xFE), u'\u2593');
  EXPECT_EQ(DecodePair(936, 0xFE, 0xFE), u'\uFFFD');
  EXPECT_EQ(DecodePair(936, 0xFF, 0xFF), u'\uFFFD');
}

}  // namespace
}  // namespace quorvel
