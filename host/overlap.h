// Whether two blocks of memory share bytes.
#pragma once

#include <cstdint>

namespace vistrel::host {

// The rows of a frame or an image: bytes at equal distances.
struct ByteRows {
  uintptr_t lowest;  // address of the row that is lowest in memory
  uint64_t stride;   // at least bytes
  uint64_t bytes;    // of a row, without the padding between rows
  uint64_t count;    // from 1

  uint64_t extent() const { return stride * (count - 1) + bytes; }
};

// Bytes between rows do not count.
bool overlap(const ByteRows& a, const ByteRows& b);

}  // namespace vistrel::host
