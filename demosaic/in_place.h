// Applies formulas to the work buffer itself, pixel by pixel, row by row. This serves regions of a
// single row or column, where the guard has copies of what the buffer held.
#pragma once

#include "demosaic/work_buffer.h"

namespace vistrel::core {

// A pixel of the work buffer and its neighbourhood.
template <class T>
struct InPlacePixel {
  T* samples;
  ptrdiff_t S;
  Mosaic mosaic;  // that begins at this pixel

  bool isGreen() const { return mosaic.isGreenAt(0, 0); }
  // The colour that its row senses besides green, and that of the rows above and below.
  int own() const { return mosaic.isRedRow(0) ? kRed : kBlue; }
  int opposite() const { return kRed + kBlue - own(); }

  // The sensed samples, and the samples of one channel.
  auto sensed() const {
    return [*this](int dx, int dy) -> int {
      return samples[dy * S + 3 * dx + mosaic.colourAt(dx, dy)];
    };
  }
  auto channel(int which) const {
    return [*this, which](int dx, int dy) -> int { return samples[dy * S + 3 * dx + which]; };
  }
};

// One pass: calls visit(pixel) for every image pixel.
template <class T, class Visit>
void passInPlace(const Region& region, T* work, Visit visit) {
  const WorkLayout layout = guardedLayout(region);
  for (uint32_t j = 0; j < region.Hf; ++j)
    for (uint32_t i = 0; i < region.Wf; ++i)
      visit(InPlacePixel<T>{work + layout.row(j) + 3 * i, static_cast<ptrdiff_t>(layout.S),
                            region.mosaic.from(i, j)});
}

}  // namespace vistrel::core
