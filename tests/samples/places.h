// Where the bits of packed samples lie.
#pragma once

#include <algorithm>
#include <cstddef>

namespace vistrel::packed {

// Where bit b of sample i lies in a row of `width` samples, counted from bit 0 of byte 0.
using PlaceOfBit = size_t (*)(size_t i, size_t b, size_t width);

inline size_t inBytes(size_t i, size_t b, size_t) { return 8 * i + b; }
inline size_t inLittle(size_t i, size_t b, size_t) { return 16 * i + b; }
inline size_t inBig(size_t i, size_t b, size_t) { return 16 * i + (b + 8) % 16; }
template <size_t kBits>
size_t inPfnc(size_t i, size_t b, size_t) {
  return kBits * i + b;
}
template <size_t kBits>
size_t inGige(size_t i, size_t b, size_t) {
  constexpr size_t kLow = kBits - 8;
  const size_t group = 24 * (i / 2), second = i % 2;
  return group + (b < kLow ? 8 + 4 * second + b : 16 * second + b - kLow);
}
template <size_t kBits, size_t kGroup>
size_t inMipi(size_t i, size_t b, size_t width) {
  constexpr size_t kLow = kBits - 8;
  const size_t first = i / kGroup * kGroup, lane = i - first;
  const size_t lanes = std::min(kGroup, width - first);
  return kBits * first + (b < kLow ? 8 * lanes + kLow * lane + b : 8 * lane + b - kLow);
}

}  // namespace vistrel::packed
