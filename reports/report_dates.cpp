#include "reports/report_dates.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

constexpr int kFebruary = 2;
constexpr Date kNoToday;  // every text here has its year

Text Number(int value) {
  return NumberToText(std::int32_t{value});
}

}  // namespace

bool IsLeapYear(int year) {
  return ParseDate(u"2/29/" + Number(year), kNoToday).has_value();
}

int DaysOfMonth(int month, int year) {
  if (month == kFebruary) return IsLeapYear(year) ? 29 : 28;
  return ParseDate(Number(month) + u"/31/" + Number(year), kNoToday) ? 31 : 30;
}

Date ReportDate(int day, int month, int year) {
  const auto date = ParseDate(Number(month) + u"/" + Number(day) + u"/" + Number(year), kNoToday);
  if (!date) throw TypeMismatch();
  return *date;
}

}  // namespace quorvel
