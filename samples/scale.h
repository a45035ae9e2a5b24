// Scales rows of samples to the bits that pictures are made with.
#pragma once

#include <cstddef>
#include <cstdint>

#include "samples/prepare.h"

namespace vistrel::core {

struct Scaling {
  uint32_t mask, below;         // as in Preparation: (s & mask) >> below
  uint32_t bits;                // of the result: 8..16
  ColumnPair<uint32_t> black;   // at most 65535
  ColumnPair<uint32_t> range;   // from black to the level where the sensor clips: 1..65535
  ColumnPair<uint32_t> factor;  // of factorOf()

  // The factor that makes `range` full scale times gain / largest gain, rounded.
  static uint32_t factorOf(uint32_t bits, uint32_t range, uint64_t gain, uint64_t largest) {
    const uint64_t full = (uint64_t{1} << bits) - 1, divisor = range * largest;
    return static_cast<uint32_t>(((full << (31 - bits)) * gain + divisor / 2) / divisor);
  }

  uint32_t shift() const { return 31 - bits; }
  uint32_t fullScale() const { return (1u << bits) - 1; }
};

// A sample s becomes
//   min((min(max(s, black) - black, range) * factor + 2^(shift - 1)) >> shift, fullScale)
// `from` has n samples at any alignment; `to` may be the same memory.
void scaleRow(const void* from, size_t n, uint16_t* to, const Scaling& how);

}  // namespace vistrel::core
