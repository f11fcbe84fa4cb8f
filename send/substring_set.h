#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace quorvel {

// A set of substrings, all of one length, of a text that only grows. Keeps their places, not their units:
// eight bytes a slot, so that a million of them stay in reach of the processor.
class SubstringSet {
 public:
  // Places are 32-bit numbers here.
  static constexpr std::size_t kLongestText = UINT32_MAX;

  // Adds the `length` units of `text` from `place` on. `text` is at most kLongestText long and, as far as it
  // went at the calls before, the same as then.
  void Insert(TextView text, std::size_t place, std::size_t length);
  // Whether `wanted`, which has the length of all, is in.
  [[nodiscard]] bool Contains(TextView text, TextView wanted) const;

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t end = 0;  // of the substring; 0 in a free slot
  };

  // The slot that holds `wanted`, otherwise the free one where it belongs.
  [[nodiscard]] std::size_t Find(TextView text, TextView wanted, std::uint32_t hash) const;
  void Grow();

  std::vector<Slot> slots_;  // a power of two; at least half of them free
  std::size_t count_ = 0;
};

}  // namespace quorvel
