#include "hosts/common/system_clock.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace quorvel {

Date SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const std::optional<Date> date = MakeDate({.year = local.tm_year + 1900,
                                             .month = local.tm_mon + 1,
                                             .day = local.tm_mday,
                                             .hour = local.tm_hour,
                                             .minute = local.tm_min,
                                             .second = std::min(local.tm_sec, 59)});  // no leap seconds
  return date.value_or(Date{});
}

std::int64_t SystemClock::Ticks() const {
  const auto since_start = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(since_start).count();
}

}  // namespace quorvel
