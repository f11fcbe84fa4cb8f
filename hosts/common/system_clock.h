#pragma once

#include "platform/clock.h"

namespace quorvel {

// The machine's clock, in its local time zone.
class SystemClock : public Clock {
 public:
  [[nodiscard]] Date Now() const override;
  [[nodiscard]] std::int64_t Ticks() const override;
};

}  // namespace quorvel
