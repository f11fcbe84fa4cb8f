#include "platform/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "expect_error.h"

namespace quorvel {
namespace {

struct Reading {
  TextView text;
  double value;
};

TEST(Val, ReadsTheNumberInFront) {
  constexpr Reading kCases[] = {
      {u"1615 198th Street", 1615198},
      {u" 2 45 7", 2457},
      {u"24 and 57", 24},
      {u"", 0},
      {u"abc", 0},
      {u"\t\n12", 12},
      {u"\r12", 0},
      {u"\u00A012", 0},
      {u"1,234", 1},
      {u"$5", 0},
      {u"1.2.3", 1.2},
      {u".", 0},
      {u".5", 0.5},
      {u"- . 5", -0.5},
      {u"5.", 5},
      {u"- 5", -5},
      {u"--5", 0},
      {u"+44 7700 900123", 447700900123},
      {u"007", 7},
      {u"\uFF11", 0},
  };
  for (const auto& [text, value] : kCases) EXPECT_EQ(Val(text), value) << ToUtf8(text);
}

TEST(Val, TakesExponentsOnlyWithDigits) {
  constexpr Reading kCases[] = {
      {u"12E3abc", 12000}, {u"12d3abc", 12000}, {u"1e", 1},
      {u"12d", 12},        {u"1 day", 1},       {u"07e5", 700000},
      {u"1 e - 2", 0.01},  {u"1e+", 1},         {u"e5", 0},
      {u"1e5.7", 100000},  {u"1e-400", 0},      {u"0e999", 0},
      {u"1.5D1", 15},      {u"0.0001e4", 1},    {u"1e00000000000000000002", 100},
  };
  for (const auto& [text, value] : kCases) EXPECT_EQ(Val(text), value) << ToUtf8(text);
  EXPECT_EQ(ErrorOf([] { return Val(u"1e309"); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return Val(u"1e99999999999999999999"); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return Val(Text(400, u'9')); }), kOverflow);
  EXPECT_EQ(Val(u"0." + Text(400, u'0') + u"1e401"), 1);
}

TEST(Val, ReadsHexadecimalAndOctalAsSignedBits) {
  constexpr Reading kCases[] = {
      {u"&HFFFF", -1},
      {u"&hff", 255},
      {u"&H0000FFFF", -1},
      {u"&HFFFF&", 65535},
      {u"&H10000", 65536},
      {u"&HFFFFFFFF", -1},
      {u"&H1FFFFFFFF", -1},
      {u"&HF00000000000000001", 1},
      {u"&O17", 15},
      {u"&123", 83},
      {u"&O177777", -1},
      {u"&H F F", 255},
      {u"&", 0},
      {u"&H", 0},
      {u"&HG", 0},
      {u"-&HFF", 0},
      {u"&18", 1},
      {u"&H1000000000000FFFF", 65535},
  };
  for (const auto& [text, value] : kCases) EXPECT_EQ(Val(text), value) << ToUtf8(text);
}

TEST(Val, RefusesTypeSuffixOnFractionOnly) {
  EXPECT_EQ(Val(u"50%"), 50);
  EXPECT_EQ(Val(u"50&"), 50);
  EXPECT_EQ(Val(u"50.%"), 50);
  EXPECT_EQ(ErrorOf([] { return Val(u"50.5%"); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { return Val(u"50.0&"); }), kTypeMismatch);
}

TEST(WholeText, IsReadByTheRulesOfTheUnitedStates) {
  constexpr Reading kCases[] = {
      {u" 12 ", 12},
      {u"\t12\r\n", 12},
      {u"1,234", 1234},
      {u"1,2,3", 123},
      {u"12,", 12},
      {u"$12", 12},
      {u"12$", 12},
      {u"-$12", -12},
      {u"$-12", -12},
      {u"$ 12 -", -12},
      {u"(12)", -12},
      {u"( $12 )", -12},
      {u"(12)$", -12},
      {u"12-", -12},
      {u"- 12", -12},
      {u"12 +", 12},
      {u"1e3", 1000},
      {u"1d-3", 0.001},
      {u".5", 0.5},
      {u"5.", 5},
      {u"1,234.5e2", 123450},
      {u"&H10", 16},
      {u" &O17 ", 15},
      {u"&HFFFF", 65535},
      {u"&HFFFFFFFF", 4294967295},
      {u"0123", 123},
      {u"1e-400", 0},
      {u"\uFF11\uFF12", 12},
      {u"12345678901234567890", 12345678901234567890.0},
      {u"9007199254740993", 9007199254740992},
      {u"0.1", 0.1},
  };
  for (const auto& [text, value] : kCases) {
    EXPECT_EQ(ToDouble(text), value) << ToUtf8(text);
    EXPECT_TRUE(IsNumeric(text)) << ToUtf8(text);
  }
}

TEST(WholeText, RefusesEverythingElse) {
  constexpr TextView kCases[] = {
      u"",      u" ",    u"abc",     u"12abc", u"1 2",   u"1.2.3", u",123",   u"$,1", u"1.2,3", u".",
      u"1e",    u"e3",   u"1e 3",    u"12%",   u"12&",   u"0x12",  u"&10",    u"&H",  u"&HG",   u"-&H10",
      u"&H10-", u"+ +0", u"-12-",    u"-(12)", u"(-12)", u"()",    u"(12",    u"12)", u"(12))", u"$$1",
      u"$1$",   u"True", u"1\u00A0", u"-",     u"$",     u"1;2",   u"\u0661",
  };
  for (const TextView text : kCases) {
    EXPECT_EQ(ErrorOf([text] { return ToDouble(text); }), kTypeMismatch) << ToUtf8(text);
    EXPECT_EQ(ErrorOf([text] { return ToLong(text); }), kTypeMismatch) << ToUtf8(text);
    EXPECT_FALSE(IsNumeric(text)) << ToUtf8(text);
  }
  EXPECT_FALSE(IsNumeric(Text(u"1\0", 2)));
}

TEST(WholeText, OverflowsBeyondDoubles) {
  for (const TextView text : {u"1e400", u"-1e400", u"&H10000000000000000"}) {
    EXPECT_EQ(ErrorOf([text] { return ToDouble(text); }), kOverflow) << ToUtf8(text);
    EXPECT_FALSE(IsNumeric(text)) << ToUtf8(text);
  }
}

TEST(Integers, RoundHalfToEvenAndOverflow) {
  EXPECT_EQ(ToInteger(u"0.5"), 0);
  EXPECT_EQ(ToInteger(u"1.5"), 2);
  EXPECT_EQ(ToInteger(u"2.5"), 2);
  EXPECT_EQ(ToInteger(u"32767.49"), 32767);
  EXPECT_EQ(ToInteger(u"-32768.5"), -32768);
  EXPECT_EQ(ErrorOf([] { return ToInteger(u"32767.5"); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return ToInteger(u"-32768.51"); }), kOverflow);
  EXPECT_EQ(ToLong(u"2147483647"), 2147483647);
  EXPECT_EQ(ToLong(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ErrorOf([] { return ToLong(u"2147483647.5"); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return ToLong(std::nan("")); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return ToInteger(1e300); }), kOverflow);
}

TEST(Integers, TakeTheBitsOfHexadecimalText) {
  EXPECT_EQ(ToInteger(u"&HFFFF"), -1);
  EXPECT_EQ(ToInteger(u"&HF000"), -4096);
  EXPECT_EQ(ToLong(u"&HF000"), 61440);
  EXPECT_EQ(ToLong(u"&HFFFFFFFF"), -1);
  EXPECT_EQ(ErrorOf([] { return ToInteger(u"&H10000"); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return ToLong(u"&H100000000"); }), kOverflow);
}

TEST(RoundHalfEven, HoldsBesideTheHalves) {
  EXPECT_EQ(RoundHalfEven(0.49999999999999994), 0);
  EXPECT_EQ(RoundHalfEven(-0.49999999999999994), 0);
  EXPECT_EQ(RoundHalfEven(-0.5), 0);
  EXPECT_EQ(RoundHalfEven(-1.5), -2);
  EXPECT_EQ(RoundHalfEven(2.5000000000000004), 3);
  EXPECT_EQ(RoundHalfEven(4503599627370497.0), 4503599627370497.0);
  EXPECT_EQ(RoundHalfEven(1e300), 1e300);
}

struct Writing {
  double value;
  TextView text;
};

TEST(NumberToText, WritesFifteenDigits) {
  const Writing cases[] = {
      {0, u"0"},
      {-0.0, u"0"},
      {-0.5, u"-0.5"},
      {447700900123, u"447700900123"},
      {-12, u"-12"},
      {999999999999999, u"999999999999999"},
      {-999999999999999, u"-999999999999999"},
      {1E15, u"1E+15"},
      {999999999999999.9, u"1E+15"},
      {1234567890123456, u"1.23456789012346E+15"},
      {-1.5E22, u"-1.5E+22"},
      {1E100, u"1E+100"},
      {99999999999999.94, u"99999999999999.9"},
      {0.1 + 0.2, u"0.3"},
      {1234.5, u"1234.5"},
      {1.0 / 3, u"0.333333333333333"},
      {1.0 / 30, u"3.33333333333333E-02"},
      {1E-5, u"0.00001"},
      {1E-7, u"0.0000001"},
      {1.234567E-9, u"0.000000001234567"},
      {1.2345678E-9, u"1.2345678E-09"},
      {5E-15, u"0.000000000000005"},
      {5E-16, u"5E-16"},
      {std::numeric_limits<double>::max(), u"1.79769313486232E+308"},
      {std::numeric_limits<double>::denorm_min(), u"4.94065645841247E-324"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(ToUtf8(NumberToText(value)), ToUtf8(text));
  EXPECT_EQ(NumberToText(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
  EXPECT_EQ(ErrorOf([] { return NumberToText(std::numeric_limits<double>::infinity()); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return NumberToText(std::nan("")); }), kOverflow);
}

TEST(NumberToText, IsReadBackAsTheSameNumber) {
  for (int power = -12; power < 20; ++power) {
    const double value = 1.9876543210123456 * std::pow(10, power);
    const double rounded = ToDouble(NumberToText(value));
    EXPECT_NEAR(rounded / value, 1, 1e-14) << value;
    EXPECT_EQ(Val(NumberToText(rounded)), rounded);
  }
}

TEST(Hex, WritesSixteenBits) {
  EXPECT_EQ(Hex(std::int16_t{0}), u"0");
  EXPECT_EQ(Hex(std::int16_t{228}), u"E4");
  EXPECT_EQ(Hex(std::int16_t{-1}), u"FFFF");
  EXPECT_EQ(Hex(std::int16_t{-32768}), u"8000");
}

TEST(AddInteger, OverflowsAtBothEnds) {
  EXPECT_EQ(AddInteger(32766, 1), 32767);
  EXPECT_EQ(AddInteger(-32767, -1), -32768);
  EXPECT_EQ(ErrorOf([] { return AddInteger(32767, 1); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { return AddInteger(-32768, -1); }), kOverflow);
}

}  // namespace
}  // namespace quorvel
