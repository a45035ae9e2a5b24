// The samples of an image in the order that picture files have.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// Calls `put(sample)` for each sample of row y: red, green, blue and alpha, or gray.
template <class Sample, class Put>
void forEachSample(const Image& image, uint32_t y, const Put& put) {
  const vistrel_layout& l = image.layout;
  // Positions in the library's pixels: gray; blue, green, red; alpha, red, green, blue.
  static constexpr uint32_t orders[5][4] = {{}, {0}, {}, {2, 1, 0}, {1, 2, 3, 0}};
  const uint8_t* from = image.pixels.data() + y * l.row_bytes;
  for (uint32_t x = 0; x < l.width; ++x, from += l.channels * sizeof(Sample))
    for (uint32_t c = 0; c < l.channels; ++c) {
      Sample sample;
      std::memcpy(&sample, from + orders[l.channels][c] * sizeof sample, sizeof sample);
      put(sample);
    }
}

}  // namespace vistrel::app
