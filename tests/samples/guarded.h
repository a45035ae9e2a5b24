// Rows that end or begin at a guard page, at any alignment.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/check/block.h"

namespace vistrel::core::test {

using check::Edge;

constexpr size_t kGuardedBytes = size_t{1} << 16;

// Bytes that a call reads.
class GuardedInput {
 public:
  // skipped: bytes between the row and the edge.
  const uint8_t* place(const void* row, size_t bytes, Edge edge, size_t skipped = 0) {
    const auto block = memory_.place(check::Shape::contiguous(bytes + skipped), edge);
    uint8_t* const begin = block.begin + (edge == Edge::start ? skipped : 0);
    if (bytes) std::memcpy(begin, row, bytes);
    return begin;
  }

 private:
  check::GuardedMemory memory_{kGuardedBytes};
};

// Bytes that a call writes.
class GuardedOutput {
 public:
  uint8_t* place(size_t bytes, Edge edge, size_t skipped = 0) {
    block_ = memory_.place(check::Shape::contiguous(bytes + skipped), edge);
    block_.writeCanary(kCanary);
    begin_ = block_.begin + (edge == Edge::start ? skipped : 0);
    bytes_ = bytes;
    return begin_;
  }

  // The samples; expects that no byte beside them has changed.
  template <class T>
  std::vector<T> samples() const {
    for (const uint8_t* p = block_.zone; p < block_.zone + block_.zoneBytes; ++p)
      if (p < begin_ || p >= begin_ + bytes_)
        if (*p != kCanary) ADD_FAILURE() << "byte " << p - begin_ << " of " << bytes_;
    std::vector<T> samples(bytes_ / sizeof(T));
    if (bytes_) std::memcpy(samples.data(), begin_, bytes_);
    return samples;
  }

 private:
  static constexpr uint8_t kCanary = 0x5C;
  check::GuardedMemory memory_{kGuardedBytes};
  check::Block block_;
  uint8_t* begin_ = nullptr;
  size_t bytes_ = 0;
};

inline std::vector<size_t> lengths() {
  std::vector<size_t> lengths;
  for (size_t n = 0; n <= 200; ++n) lengths.push_back(n);
  for (const size_t n : {257, 1000, 4095, 4096, 4103}) lengths.push_back(n);
  return lengths;
}

}  // namespace vistrel::core::test
