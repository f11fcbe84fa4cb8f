#pragma once

#include <cstdint>

#include "platform/dates.h"

namespace quorvel {

class Clock {
 public:
  virtual ~Clock() = default;

  // The local date and time, to the second.
  [[nodiscard]] virtual Date Now() const = 0;
  // Milliseconds from an arbitrary start; never goes back.
  [[nodiscard]] virtual std::int64_t Ticks() const = 0;
};

}  // namespace quorvel
