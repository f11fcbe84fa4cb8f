#include "platform/dates.h"

#include <chrono>
#include <cmath>
#include <limits>

#include "platform/runtime_error.h"

namespace quorvel {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int64_t kSecondsPerMinute = 60;
constexpr std::int64_t kSecondsPerDay = 86400;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

constexpr year_month_day Calendar(int year, int month, int day) {
  return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
          std::chrono::day(static_cast<unsigned>(day))};
}

constexpr sys_days kDayZero = Calendar(1899, 12, 30);

constexpr std::int64_t Day(const year_month_day& calendar) {
  return (sys_days(calendar) - kDayZero).count();
}

constexpr std::int64_t kFirstDay = Day(Calendar(kFirstYear, 1, 1));
constexpr std::int64_t kLastDay = Day(Calendar(kLastYear, 12, 31));

constexpr bool IsIn(int value, int first, int last) {
  return value >= first && value <= last;
}

struct Quotient {
  std::int64_t whole;
  std::int64_t rest;
};

// Rounded down, so that the rest is never negative.
constexpr Quotient Divide(std::int64_t seconds, std::int64_t unit) {
  const std::int64_t rest = (seconds % unit + unit) % unit;
  return {(seconds - rest) / unit, rest};
}

Date FromSeconds(std::int64_t seconds) {
  const auto [day, rest] = Divide(seconds, kSecondsPerDay);
  const double time = static_cast<double>(rest) / static_cast<double>(kSecondsPerDay);
  const auto whole = static_cast<double>(day);
  return {day < 0 ? whole - time : whole + time};
}

}  // namespace

DateParts Parts(Date date) {
  const auto [day, seconds] = Divide(WholeSeconds(date), kSecondsPerDay);
  const year_month_day calendar(kDayZero + std::chrono::days(day));
  const auto time = static_cast<int>(seconds);
  return {static_cast<int>(calendar.year()),
          static_cast<int>(static_cast<unsigned>(calendar.month())),
          static_cast<int>(static_cast<unsigned>(calendar.day())),
          time / 3600,
          time / 60 % 60,
          time % 60};
}

std::optional<Date> MakeDate(const DateParts& parts) {
  if (!IsIn(parts.year, kFirstYear, kLastYear) || !IsIn(parts.month, 1, 12)) return std::nullopt;
  if (!IsIn(parts.day, 1, DaysInMonth(parts.year, parts.month))) return std::nullopt;
  if (!IsIn(parts.hour, 0, 23) || !IsIn(parts.minute, 0, 59) || !IsIn(parts.second, 0, 59))
    return std::nullopt;
  const std::int64_t time = (parts.hour * 60 + parts.minute) * kSecondsPerMinute + parts.second;
  return FromSeconds(Day(Calendar(parts.year, parts.month, parts.day)) * kSecondsPerDay + time);
}

int DaysInMonth(int year, int month) {
  const std::chrono::year_month_day_last last(
      std::chrono::year(year), std::chrono::month_day_last(std::chrono::month(static_cast<unsigned>(month))));
  return static_cast<int>(static_cast<unsigned>(last.day()));
}

// The fraction of a serial is the time of day below 0 too: -1.25 is 06:00 of day -1.
std::int64_t WholeSeconds(Date date) {
  const double day = std::trunc(date.serial);
  const bool is_valid = day >= static_cast<double>(kFirstDay) && day <= static_cast<double>(kLastDay);
  if (!is_valid) throw InvalidCall();  // NaN included
  const double time = std::abs(date.serial - day) * static_cast<double>(kSecondsPerDay);
  return static_cast<std::int64_t>(day) * kSecondsPerDay + static_cast<std::int64_t>(std::round(time));
}

std::int32_t MinutesBetween(Date from, Date to) {
  const std::int64_t minutes =
      Divide(WholeSeconds(to), kSecondsPerMinute).whole - Divide(WholeSeconds(from), kSecondsPerMinute).whole;
  using Limits = std::numeric_limits<std::int32_t>;
  if (minutes < Limits::min() || minutes > Limits::max()) throw Overflow();
  return static_cast<std::int32_t>(minutes);
}

Date AddMinutes(Date date, std::int32_t minutes) {
  const std::int64_t seconds = WholeSeconds(date) + minutes * kSecondsPerMinute;
  const std::int64_t day = Divide(seconds, kSecondsPerDay).whole;
  if (day < kFirstDay || day > kLastDay) throw InvalidCall();
  return FromSeconds(seconds);
}

}  // namespace quorvel
