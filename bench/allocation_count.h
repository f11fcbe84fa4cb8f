#pragma once

#include <cstdint>

namespace quorvel {

// Follows the program's allocations while it lives; one at a time, on one thread.
class AllocationCount {
 public:
  AllocationCount();
  AllocationCount(const AllocationCount&) = delete;
  AllocationCount& operator=(const AllocationCount&) = delete;
  ~AllocationCount();

  // The most bytes that were in use at once, beyond those in use at the start.
  [[nodiscard]] std::int64_t peak() const;
};

}  // namespace quorvel
