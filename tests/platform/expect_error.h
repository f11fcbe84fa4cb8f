#pragma once

#include <gtest/gtest.h>

#include "platform/runtime_error.h"

namespace quorvel {

inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kTypeMismatch = 13;

// The number of the run-time error that `action` raises, 0 when it raises none.
template <typename Action>
[[nodiscard]] int ErrorOf(Action action) {
  try {
    static_cast<void>(action());
  } catch (const RuntimeError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace quorvel
