// Records which rows have samples of more than twelve bits. Sums of smaller samples fit 16-bit
// lanes.
#pragma once

#include <climits>
#include <cstdint>

namespace vistrel::core {

// Whether samples with these bits, and no others, have at most twelve bits.
constexpr bool isTwelveBits(uint32_t bits) { return bits >> 12 == 0; }

class RowDepths {
 public:
  // Rows come in ascending order. bits: the samples of row y ORed together.
  void loaded(int y, uint32_t bits) {
    if (!isTwelveBits(bits)) lastDeep_ = y;
  }

  // Whether neither row y nor any row loaded later has a sample of more than twelve bits.
  bool areTwelveBitsFrom(int y) const { return lastDeep_ < y; }

 private:
  int lastDeep_ = INT_MIN;
};

}  // namespace vistrel::core
