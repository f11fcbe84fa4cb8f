#include "platform/memory/fixed_clock.h"

#include <stdexcept>

namespace quorvel {

void FixedClock::SetNow(const DateParts& now) {
  const std::optional<Date> date = MakeDate(now);
  if (!date) throw std::invalid_argument("no such date");
  now_ = *date;
}

void FixedClock::Advance(std::int64_t milliseconds) {
  constexpr double kMillisecondsPerDay = 86'400'000;
  now_.serial += static_cast<double>(milliseconds) / kMillisecondsPerDay;
  ticks_ += milliseconds;
}

}  // namespace quorvel
