#pragma once

#include <cstdint>
#include <optional>

#include "platform/text.h"

namespace quorvel {

// A local date and time: days since 1899-12-30, the time of day as the fraction. Years 100 to 9999.
struct Date {
  double serial = 0;

  friend bool operator==(const Date&, const Date&) = default;
  friend auto operator<=>(const Date&,
                          const Date&) = default;  // NOLINT(modernize-use-nullptr): clang-tidy 14 misreads it
};

// A date taken apart. Seconds are rounded to whole ones.
struct DateParts {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// Throws InvalidCall, as every function here that takes a date, when its year is not 100 to 9999.
[[nodiscard]] DateParts Parts(Date date);
// `parts` as a date; nothing when a part is out of its range (month 13, 30 February, hour 24).
[[nodiscard]] std::optional<Date> MakeDate(const DateParts& parts);
// `month` is 1 to 12.
[[nodiscard]] int DaysInMonth(int year, int month);

// The date that `text` denotes under en-US (month first), as the runtime's CDate reads it, including its
// readings of unusual forms; nothing when it is no date (the runtime's IsDate). `today` supplies the year
// that a text leaves out.
[[nodiscard]] std::optional<Date> ParseDate(TextView text, Date today);

// Seconds since 1899-12-30, rounded to whole ones; the time of day counts onwards from midnight before it
// too.
[[nodiscard]] std::int64_t WholeSeconds(Date date);

// Whole-minute boundaries between the two, seconds dropped on both sides; negative when `to` is earlier (the
// runtime's DateDiff "n"). Throws Overflow when they are too many.
[[nodiscard]] std::int32_t MinutesBetween(Date from, Date to);
// Throws InvalidCall when the result leaves the years 100 to 9999. The result is in whole seconds.
[[nodiscard]] Date AddMinutes(Date date, std::int32_t minutes);

// `date` in the runtime's Format notation: d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss AM/PM, "quoted"
// and \escaped literals. m and mm whose last symbol before them is h or hh are minutes. English names.
// Whatever is no symbol stands for itself.
[[nodiscard]] Text FormatDate(Date date, TextView pattern);

// en-US general form: "1/2/2024", "1/2/2024 3:04:00 PM", "3:04:00 PM" when the day part is 0.
[[nodiscard]] Text DateToText(Date date);

}  // namespace quorvel
