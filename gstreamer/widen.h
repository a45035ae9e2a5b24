// Pixels of 16-bit samples with alpha.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::gstreamer {

// Where the samples of a pixel of four are, in samples, and whether their bytes are those of the
// other byte order.
struct WideOrder {
  size_t red, green, blue, alpha;
  bool swapped;
};

// Turns `pixels` pixels of red, green and blue, which end the row, into pixels that fill it. The
// row is aligned to 2 bytes or not.
void widenRow(uint8_t* row, size_t pixels, const WideOrder& order);

}  // namespace vistrel::gstreamer
