// A caller's memory whose last byte lies before a page that must not be touched.
#pragma once

#include <cstring>
#include <vector>

#include "tests/check/block.h"

namespace vistrel {

class Guarded {
 public:
  explicit Guarded(size_t capacity) : memory_(capacity) {}

  // A copy of these bytes.
  const uint8_t* place(const std::vector<uint8_t>& bytes) {
    uint8_t* const begin =
        memory_.place(Shape::contiguous(bytes.size()), core::check::Edge::end).begin;
    std::memcpy(begin, bytes.data(), bytes.size());
    return begin;
  }

  // So many bytes, all of the canary's value.
  uint8_t* place(size_t bytes) {
    const auto block = memory_.place(Shape::contiguous(bytes), core::check::Edge::end);
    block.writeCanary(kCanary);
    std::memset(block.begin, kCanary, bytes);
    return block.begin;
  }

  static constexpr uint8_t kCanary = 0x5C;

 private:
  using Shape = core::check::Shape;
  core::check::GuardedMemory memory_;
};

}  // namespace vistrel
