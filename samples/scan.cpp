#include "samples/scan.h"

#include <cstring>

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "samples/scan-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

template <class T>
bool exceeds(const void* row, size_t n, T excess) {
  return (VISTREL_BY_LEVEL(bitsOf<T>)(row, n) & excess) != 0;
}

template <class T>
size_t firstExceeding(const void* row, size_t n, T excess) {
  const auto* const from = static_cast<const char*>(row);
  for (size_t i = 0; i < n; ++i) {
    T sample;
    std::memcpy(&sample, from + i * sizeof sample, sizeof sample);
    if (sample & excess) return i;
  }
  return n;
}

template <class T>
ColumnPair<uint64_t> sumsAboveBlack(const void* row, size_t n, const Preparation& how) {
  return VISTREL_BY_LEVEL(sumsAboveBlack<T>)(row, n, how);
}

template bool exceeds(const void*, size_t, uint8_t);
template bool exceeds(const void*, size_t, uint16_t);
template size_t firstExceeding(const void*, size_t, uint8_t);
template size_t firstExceeding(const void*, size_t, uint16_t);
template ColumnPair<uint64_t> sumsAboveBlack<uint8_t>(const void*, size_t, const Preparation&);
template ColumnPair<uint64_t> sumsAboveBlack<uint16_t>(const void*, size_t, const Preparation&);

}  // namespace vistrel::core
