#pragma once

#include <cstdint>

#include "platform/clock.h"

namespace quorvel {

// A clock that stands still until it is moved.
class FixedClock : public Clock {
 public:
  explicit FixedClock(const DateParts& now) { SetNow(now); }

  // Throws std::invalid_argument for a date that does not exist.
  void SetNow(const DateParts& now);
  // Moves the date and the ticks on together.
  void Advance(std::int64_t milliseconds);

  [[nodiscard]] Date Now() const override { return now_; }
  [[nodiscard]] std::int64_t Ticks() const override { return ticks_; }

 private:
  Date now_;
  std::int64_t ticks_ = 0;
};

}  // namespace quorvel
