#include "platform/dates.h"

#include <gtest/gtest.h>

#include <limits>

#include "expect_error.h"

namespace quorvel {
namespace {

Date At(const DateParts& parts) {
  const std::optional<Date> date = MakeDate(parts);
  EXPECT_TRUE(date.has_value());
  return date.value_or(Date{});
}

constexpr Date kToday{45474};  // 2024-07-01

std::string Read(TextView text) {
  const std::optional<Date> date = ParseDate(text, kToday);
  return date ? ToUtf8(FormatDate(*date, u"yyyy-mm-dd hh:nn:ss")) : "no date";
}

TEST(Dates, CountDaysFromTheEndOf1899) {
  EXPECT_EQ(At({1899, 12, 30}).serial, 0);
  EXPECT_EQ(At({1900, 3, 1}).serial, 61);
  EXPECT_EQ(At({1970, 1, 2}).serial, 25570);
  EXPECT_EQ(At({2024, 2, 29, 12, 0, 0}).serial, 45351.5);
  EXPECT_EQ(At({100, 1, 1}).serial, -657434);
  EXPECT_EQ(At({9999, 12, 31}).serial, 2958465);
  EXPECT_EQ(At({1899, 12, 29, 6, 0, 0}).serial, -1.25);
}

TEST(Dates, RefusePartsOutOfRange) {
  constexpr DateParts kCases[] = {
      {2024, 13, 1},
      {2024, 0, 1},
      {2023, 2, 29},
      {2024, 4, 31},
      {2024, 1, 0},
      {1900, 2, 29},
      {99, 1, 1},
      {10000, 1, 1},
      {2024, 1, 1, 24, 0, 0},
      {2024, 1, 1, 0, 60, 0},
      {2024, 1, 1, 0, 0, 60},
      {2024, 1, 1, -1, 0, 0},
  };
  for (const DateParts& parts : kCases) EXPECT_FALSE(MakeDate(parts)) << parts.year << ' ' << parts.month;
  EXPECT_EQ(DaysInMonth(2000, 2), 29);
  EXPECT_EQ(DaysInMonth(2100, 2), 28);
  EXPECT_EQ(DaysInMonth(2024, 12), 31);
}

TEST(Dates, AreTakenApartToWholeSeconds) {
  constexpr TextView kPattern = u"yyyy-mm-dd hh:nn:ss";
  EXPECT_EQ(FormatDate({45293.9999999}, kPattern), u"2024-01-03 00:00:00");
  EXPECT_EQ(FormatDate({-1.25}, kPattern), u"1899-12-29 06:00:00");
  EXPECT_EQ(FormatDate({-657434.5}, kPattern), u"0100-01-01 12:00:00");
  for (int second = 0; second < 86400; second += 7) {
    const DateParts parts{2024, 5, 17, second / 3600, second / 60 % 60, second % 60};
    const DateParts again = Parts(At(parts));
    ASSERT_EQ(again.hour * 3600 + again.minute * 60 + again.second, second);
    ASSERT_EQ(again.day, 17);
  }
}

TEST(Dates, OutsideTheCalendarAreInvalid) {
  for (const double serial : {2958466.0, -657435.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(ErrorOf([serial] { return Parts({serial}); }), kInvalidCall) << serial;
  }
  EXPECT_EQ(ErrorOf([] { return AddMinutes({2958465}, 1440); }), kInvalidCall);
  EXPECT_EQ(ErrorOf([] { return AddMinutes({-657434}, -1); }), kInvalidCall);
  EXPECT_EQ(ErrorOf([] { return MinutesBetween({-657434}, {2958465}); }), kOverflow);
}

TEST(MinutesBetween, CountsBoundariesWithoutSeconds) {
  const Date from = At({2024, 1, 2, 10, 0, 59});
  EXPECT_EQ(MinutesBetween(from, At({2024, 1, 2, 10, 1, 0})), 1);
  EXPECT_EQ(MinutesBetween(from, At({2024, 1, 2, 10, 0, 0})), 0);
  EXPECT_EQ(MinutesBetween(from, At({2024, 1, 2, 9, 59, 59})), -1);
  EXPECT_EQ(MinutesBetween(from, At({2024, 1, 3, 10, 0, 0})), 1440);
  EXPECT_EQ(MinutesBetween({-0.5}, {0.5}), 0);  // noon of day 0 twice
  EXPECT_EQ(MinutesBetween(At({1899, 12, 29, 23, 59, 30}), {0}), 1);
}

TEST(AddMinutes, CrossesDaysAndKeepsSeconds) {
  EXPECT_EQ(AddMinutes(At({2024, 12, 31, 23, 59, 30}), 1), At({2025, 1, 1, 0, 0, 30}));
  EXPECT_EQ(AddMinutes(At({2024, 3, 1}), -1), At({2024, 2, 29, 23, 59, 0}));
  EXPECT_EQ(AddMinutes({0}, -1), At({1899, 12, 29, 23, 59, 0}));
}

struct DateReading {
  TextView text;
  const char* date;
};

TEST(ParseDate, TakesTheMonthFirst) {
  constexpr DateReading kCases[] = {
      {u"1/2/2024", "2024-01-02 00:00:00"},
      {u"01-02-2024", "2024-01-02 00:00:00"},
      {u" 1 2 2024 ", "2024-01-02 00:00:00"},
      {u"1 / 2/2024", "2024-01-02 00:00:00"},
      {u"1-2/2024", "2024-01-02 00:00:00"},
      {u"2024/1/2", "2024-01-02 00:00:00"},
      {u"2024-01-02", "2024-01-02 00:00:00"},
      {u"2/29/2024", "2024-02-29 00:00:00"},
      {u"9999-12-31 23:59:59", "9999-12-31 23:59:59"},
      {u"1/2/100", "0100-01-02 00:00:00"},
      {u"1/2/29", "2029-01-02 00:00:00"},
      {u"1/2/30", "1930-01-02 00:00:00"},
  };
  for (const auto& [text, date] : kCases) EXPECT_EQ(Read(text), date) << ToUtf8(text);
}

TEST(ParseDate, TriesOtherOrdersWhenTheMonthIsNone) {
  constexpr DateReading kCases[] = {
      {u"13/1/2024", "2024-01-13 00:00:00"},
      {u"2024-13-01", "2024-01-13 00:00:00"},
      {u"14 2 3", "2014-02-03 00:00:00"},
      {u"32 2 3", "1932-02-03 00:00:00"},
      {u"31/12/24", "1931-12-24 00:00:00"},
      {u"1/2", "2024-01-02 00:00:00"},
      {u"14 1", "2024-01-14 00:00:00"},
      {u"12/2024", "2024-12-01 00:00:00"},
      {u"30 2", "1930-02-01 00:00:00"},
      {u"2/30", "1930-02-01 00:00:00"},
      {u"31/12/2024 10:00 AM", "2024-12-31 10:00:00"},
  };
  for (const auto& [text, date] : kCases) EXPECT_EQ(Read(text), date) << ToUtf8(text);
}

TEST(ParseDate, TakesMonthsByName) {
  constexpr DateReading kCases[] = {
      {u"Jan 2, 2024", "2024-01-02 00:00:00"}, {u"2 january 2024", "2024-01-02 00:00:00"},
      {u"2-JAN-1970", "1970-01-02 00:00:00"},  {u"2Jan2024", "2024-01-02 00:00:00"},
      {u"2024 Dec 31", "2024-12-31 00:00:00"}, {u"May 31", "2024-05-31 00:00:00"},
      {u"Jan 35", "1935-01-01 00:00:00"},      {u"Jan 2024", "2024-01-01 00:00:00"},
      {u"10AM, 2 Jan", "2024-01-02 10:00:00"},
  };
  for (const auto& [text, date] : kCases) EXPECT_EQ(Read(text), date) << ToUtf8(text);
}

TEST(ParseDate, TakesTimesBeforeAndBehindTheDate) {
  constexpr DateReading kCases[] = {
      {u"1/2/2024 3:04", "2024-01-02 03:04:00"},
      {u"1/2/2024, 3:04:05 pm", "2024-01-02 15:04:05"},
      {u"1/2/2024\u3000"
       u"3:04P",
       "2024-01-02 15:04:00"},
      {u"3:04PM 1/2/2024", "2024-01-02 15:04:00"},
      {u"1/2/2024 10 AM", "2024-01-02 10:00:00"},
      {u"1 2 3 am", "2024-01-02 03:00:00"},
      {u"1.2 3 4", "2024-03-04 01:02:00"},
      {u"3 4 1.2", "2024-03-04 01:02:00"},
      {u"10 AM", "1899-12-30 10:00:00"},
      {u"2.5", "1899-12-30 02:05:00"},
      {u"0.1", "1899-12-30 00:01:00"},
      {u"0:00", "1899-12-30 00:00:00"},
      {u"0 AM", "1899-12-30 00:00:00"},
      {u"0.0.0", "1899-12-30 00:00:00"},
      {u"04.28.14", "1899-12-30 04:28:14"},
      {u"12:59 AM", "1899-12-30 00:59:00"},
      {u"12:59 a", "1899-12-30 00:59:00"},
      {u"12:59 pm", "1899-12-30 12:59:00"},
      {u"00:00 PM", "1899-12-30 12:00:00"},
      {u"13:00 AM", "1899-12-30 13:00:00"},
      {u"13:00 PM", "1899-12-30 13:00:00"},
  };
  for (const auto& [text, date] : kCases) EXPECT_EQ(Read(text), date) << ToUtf8(text);
}

TEST(ParseDate, RefusesEverythingElse) {
  constexpr TextView kCases[] = {
      u"",
      u" ",
      u"4",
      u"0",
      u"True",
      u"abc",
      u"2/30/2024",
      u"0/1/2024",
      u"13/32/2014",
      u"2 32 3",
      u"32 49",
      u"0 49",
      u"24:00",
      u"10:60",
      u"0.60",
      u"23:59:60",
      u"20240102",
      u"2024-01-02T10:00",
      u"2013-05-14 02:04:12.017000000",
      u"0.0",
      u"0.",
      u".0",
      u"-1.1",
      u"1.1-",
      u"10:30:",
      u"1//2/2024",
      u"1/2/2024,",
      u"04.28.2014",
      u"02.01.1970",
      u"02.01.1970 00:00:00",
      u"10",
      u"1/2/2024 10",
      u"1 2 am",
      u"1 am 2",
      u"1.5 2",
      u"1 5.2",
      u"1 2 am 3",
      u"1 2.3 4",
      u"1.2.3 4",
      u"1.2 3.4",
      u"1.2.3.4",
      u"1 2 3 4",
      u"1.2 3 am 4",
      u"1 2 3 4 5",
      u"1 am 2 3.4",
      u"Tuesday, January 2, 2024",
      u"Janu 2 2024",
      u"Sept 2, 2024",
      u"Jan. 2, 2024",
      u"Jan",
      u"Jan Feb 2",
      u"1/2/2024 PM",
      u"PM 10:00",
      u"10:30 AMX",
      u"1/2/99999",
      u"99999999999999999999/1/1",
      u"1/2/2024 10:00 a.m.",
      u"10:00/1/2/2024",
      u"1/2/2024/10:00",
      u"Jan:2",
      u"10:00 AM PM",
      u"1;2;3",
      u"(1:2)",
      u"\u0661/2/2024",
  };
  for (const TextView text : kCases) EXPECT_EQ(Read(text), "no date") << ToUtf8(text);
}

TEST(FormatDate, WritesThePatternsInUse) {
  const Date date = At({2024, 1, 2, 15, 4, 5});
  EXPECT_EQ(FormatDate(date, u"dddd dd mmmm yyyy hh:mm AM/PM"), u"Tuesday 02 January 2024 03:04 PM");
  EXPECT_EQ(FormatDate(date, u"yyyymmdd"), u"20240102");
  EXPECT_EQ(FormatDate(date, u"MM/DD/YYYY hh:mm AM/PM"), u"01/02/2024 03:04 PM");
}

TEST(FormatDate, TellsMinutesFromMonths) {
  const Date date = At({2024, 1, 2, 15, 4, 5});
  EXPECT_EQ(FormatDate(date, u"m h:m m mm"), u"1 15:4 1 01");
  EXPECT_EQ(FormatDate(date, u"hh \"m\" mm"), u"15 m 04");
  EXPECT_EQ(FormatDate(date, u"mm:ss n nn"), u"01:05 4 04");
  EXPECT_EQ(FormatDate(date, u"h mmm"), u"15 Jan");
}

TEST(FormatDate, WritesLiteralsNamesAndHalves) {
  const Date midnight = At({2024, 9, 1, 0, 7, 0});
  EXPECT_EQ(FormatDate(midnight, u"h:n am/pm H AM/PM"), u"12:7 am 12 AM");
  EXPECT_EQ(FormatDate(At({2024, 9, 1, 12, 0, 0}), u"hh AM/PM"), u"12 PM");
  EXPECT_EQ(FormatDate(midnight, u"ddd d mmm yy"), u"Sun 1 Sep 24");
  EXPECT_EQ(FormatDate(midnight, u"\\d\"day\"d"), u"dday1");
  EXPECT_EQ(FormatDate(midnight, u"\"open d"), u"open d");
  EXPECT_EQ(FormatDate(midnight, u"d\\"), u"1");
  EXPECT_EQ(FormatDate(midnight, u""), u"");
}

TEST(DateToText, LeavesOutWhatIsZero) {
  EXPECT_EQ(DateToText(At({2024, 1, 2})), u"1/2/2024");
  EXPECT_EQ(DateToText(At({2024, 11, 12, 3, 4, 0})), u"11/12/2024 3:04:00 AM");
  EXPECT_EQ(DateToText({0.5}), u"12:00:00 PM");
  EXPECT_EQ(DateToText({0}), u"12:00:00 AM");
  EXPECT_EQ(DateToText({45293.999999}), u"1/3/2024");
}

}  // namespace
}  // namespace quorvel
