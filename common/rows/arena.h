// The memory of one conversion: rings of rows, taken one after the other from a single block.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace vistrel::core {

// An arena without a block returns null and only counts. Code that takes memory twice in the same
// way, first to count and then from a block of that size, needs only one allocation.
class Arena {
 public:
  static constexpr size_t kAlign = 64;

  Arena() = default;  // counts
  // block must be aligned to kAlign.
  explicit Arena(void* block) : block_(static_cast<char*>(block)) {}

  // n elements, not initialized.
  template <class T>
  T* take(size_t n) {
    void* const place = block_ ? block_ + used_ : nullptr;
    used_ += (n * sizeof(T) + kAlign - 1) / kAlign * kAlign;
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
  struct Free {
    void operator()(void* block) const { std::free(block); }
  };
  Arena count;
  body(count);
  const std::unique_ptr<void, Free> block(std::aligned_alloc(Arena::kAlign, count.used()));
  if (!block) return false;
  Arena arena(block.get());
  body(arena);
  return true;
}

}  // namespace vistrel::core
