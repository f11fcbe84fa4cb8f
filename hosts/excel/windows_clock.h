#pragma once

#include "platform/clock.h"

namespace quorvel {

// The computer's clock, in the user's time zone.
class WindowsClock : public Clock {
 public:
  [[nodiscard]] Date Now() const override;
  [[nodiscard]] std::int64_t Ticks() const override;
};

}  // namespace quorvel
