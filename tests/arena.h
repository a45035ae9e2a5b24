// An arena of a megabyte, which was in use before.
#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>

#include "common/rows/arena.h"

namespace vistrel::core::test {

class Memory {
 public:
  Memory() { std::memset(block_.get(), 0xA5, kBytes); }
  operator Arena&() { return arena_; }

 private:
  static constexpr size_t kBytes = size_t{1} << 20;
  struct Free {
    void operator()(void* block) const { std::free(block); }
  };
  const std::unique_ptr<void, Free> block_{std::aligned_alloc(Arena::kAlign, kBytes)};
  Arena arena_{block_.get()};
};

}  // namespace vistrel::core::test
