// The memory of one conversion: rings of rows, taken one after the other from a single block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "common/aligned_memory.h"

namespace vistrel::core {

// An arena without a block returns null and only counts. Code that takes memory twice in the same
// way, first to count and then from a block of that size, needs only one allocation.
class Arena {
 public:
  static constexpr size_t kAlign = 64;
  static constexpr size_t kMost = SIZE_MAX / kAlign * kAlign;

  Arena() = default;  // counts
  // block must be aligned to kAlign.
  explicit Arena(void* block) : block_(static_cast<char*>(block)) {}

  // n elements, not initialized. Counts no further than to kMost, which no allocation grants.
  template <class T>
  T* take(size_t n) {
    void* const place = block_ ? block_ + used_ : nullptr;
    const bool fits = n <= (kMost - used_) / sizeof(T);
    used_ = fits ? used_ + (n * sizeof(T) + kAlign - 1) / kAlign * kAlign : kMost;
    return static_cast<T*>(place);
  }

  size_t used() const { return used_; }
  bool counts() const { return !block_; }

 private:
  char* block_ = nullptr;
  size_t used_ = 0;
};

// Calls body(arena) with an arena that counts, then with one that has memory. The first time, body
// must only construct what takes memory. Returns false if the allocation fails.
template <class Body>
bool withArena(Body body) {
  Arena count;
  body(count);
  const std::unique_ptr<void, FreeAligned> block(allocateAligned(Arena::kAlign, count.used()));
  if (!block) return false;
  Arena arena(block.get());
  body(arena);
  return true;
}

}  // namespace vistrel::core
