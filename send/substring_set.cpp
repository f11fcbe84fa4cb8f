#include "send/substring_set.h"

#include <algorithm>
#include <functional>

namespace quorvel {

namespace {

constexpr std::size_t kFirstSlots = 64;

std::uint32_t Hash(TextView text) {
  return static_cast<std::uint32_t>(std::hash<TextView>()(text));
}

}  // namespace

void SubstringSet::Insert(TextView text, std::size_t place, std::size_t length) {
  if (2 * count_ >= slots_.size()) Grow();
  const TextView added = text.substr(place, length);
  const std::uint32_t hash = Hash(added);
  Slot& slot = slots_[Find(text, added, hash)];
  if (slot.end != 0) return;
  slot = {hash, static_cast<std::uint32_t>(place + length)};
  ++count_;
}

bool SubstringSet::Contains(TextView text, TextView wanted) const {
  return count_ > 0 && slots_[Find(text, wanted, Hash(wanted))].end != 0;
}

std::size_t SubstringSet::Find(TextView text, TextView wanted, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
    const Slot& slot = slots_[i];
    if (slot.end == 0) return i;
    if (slot.hash == hash && text.substr(slot.end - wanted.size(), wanted.size()) == wanted) return i;
  }
}

void SubstringSet::Grow() {
  std::vector<Slot> slots(std::max(kFirstSlots, 2 * slots_.size()));
  const std::size_t mask = slots.size() - 1;
  for (const Slot& slot : slots_) {
    if (slot.end == 0) continue;
    std::size_t i = slot.hash & mask;
    while (slots[i].end != 0) i = (i + 1) & mask;
    slots[i] = slot;
  }
  slots_.swap(slots);
}

}  // namespace quorvel
