// Which rows have samples of more than twelve bits. Sums of smaller samples fit lanes of 16 bits.
#pragma once

#include <climits>
#include <cstdint>

namespace vistrel::core {

// Whether samples that have no other bits than these are of twelve bits at most.
constexpr bool isTwelveBits(uint32_t bits) { return bits >> 12 == 0; }

class RowDepths {
 public:
  // Rows come in ascending order. bits: all that samples of row y have.
  void loaded(int y, uint32_t bits) {
    if (!isTwelveBits(bits)) lastDeep_ = y;
  }

  // Whether neither row y nor a row loaded after it has a sample of more than twelve bits.
  bool areTwelveBitsFrom(int y) const { return lastDeep_ < y; }

 private:
  int lastDeep_ = INT_MIN;
};

}  // namespace vistrel::core
