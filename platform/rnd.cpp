#include "platform/rnd.h"

namespace quorvel {

float Rnd::Next() {
  constexpr std::uint32_t kMultiplier = 0x43FD43FD;
  constexpr std::uint32_t kIncrement = 0xC39EC3;
  constexpr std::uint32_t kMask = 0xFFFFFF;
  state_ = (state_ * kMultiplier + kIncrement) & kMask;
  return static_cast<float>(state_) / static_cast<float>(kMask + 1);
}

}  // namespace quorvel
