#pragma once

#include <cstdint>

namespace quorvel {

// The language runtime's pseudo-random sequence (Microsoft KB 231847), unseeded: every instance gives the
// same numbers.
class Rnd {
 public:
  // The next number in [0, 1).
  float Next();

 private:
  std::uint32_t state_ = 0x50000;
};

}  // namespace quorvel
