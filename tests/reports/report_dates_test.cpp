#include "reports/report_dates.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"

namespace quorvel {
namespace {

TEST(ReportDates, CenturiesAreLeapYearsByTheFourHundreds) {
  EXPECT_TRUE(IsLeapYear(2024));
  EXPECT_FALSE(IsLeapYear(2023));
  EXPECT_TRUE(IsLeapYear(2000));
  EXPECT_FALSE(IsLeapYear(2100));
}

TEST(ReportDates, EachMonthHasItsDays) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int month = 1; month <= 12; ++month) EXPECT_EQ(DaysOfMonth(month, 2023), kDays[month - 1]) << month;
  EXPECT_EQ(DaysOfMonth(2, 2024), 29);
}

TEST(ReportDates, DayAndMonthAreNeverExchanged) {
  EXPECT_EQ(FormatDate(ReportDate(4, 12, 2023), u"yyyymmdd"), u"20231204");
  EXPECT_EQ(FormatDate(ReportDate(12, 4, 2023), u"yyyymmdd"), u"20230412");
  EXPECT_THROW(static_cast<void>(ReportDate(29, 2, 2023)), RuntimeError);
}

}  // namespace
}  // namespace quorvel
