#include "allocation_count.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

bool counting = false;
std::int64_t live = 0;
std::int64_t most = 0;

void* Allocate(std::size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  if (counting) {
    live += static_cast<std::int64_t>(malloc_usable_size(block));
    most = std::max(most, live);
  }
  return block;
}

void Release(void* block) {
  if (counting && block != nullptr) live -= static_cast<std::int64_t>(malloc_usable_size(block));
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  return Allocate(size);
}
void operator delete(void* block) noexcept {
  Release(block);
}
void operator delete(void* block, std::size_t) noexcept {
  Release(block);
}

namespace quorvel {

AllocationCount::AllocationCount() {
  counting = true;
  live = most = 0;
}

AllocationCount::~AllocationCount() {
  counting = false;
}

std::int64_t AllocationCount::peak() const {
  return most;
}

}  // namespace quorvel
