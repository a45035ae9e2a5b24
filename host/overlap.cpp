#include "host/overlap.h"

#include <algorithm>

namespace vistrel::host {
namespace {

bool meet(uint64_t a, uint64_t aBytes, uint64_t b, uint64_t bBytes) {
  return a < b + bBytes && b < a + aBytes;
}

}  // namespace

bool overlap(const ByteRows& a, const ByteRows& b) {
  if (!meet(a.lowest, a.extent(), b.lowest, b.extent())) return false;
  for (uint64_t i = 0; i < a.count; ++i) {
    const uint64_t row = a.lowest + i * a.stride, end = row + a.bytes;
    if (end <= b.lowest) continue;
    // If any row of b overlaps this one, the last row that begins before its end does.
    const uint64_t last = std::min((end - 1 - b.lowest) / b.stride, b.count - 1);
    if (meet(row, a.bytes, b.lowest + last * b.stride, b.bytes)) return true;
  }
  return false;
}

}  // namespace vistrel::host
