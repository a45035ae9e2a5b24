// Formulas applied to the work buffer itself, pixel by pixel, in the order of the rows. It serves
// regions of a single row or column, where the guard has copies of what the buffer held.
#pragma once

#include "demosaic/work_buffer.h"

namespace vistrel::core {

// A pixel of the work buffer and its neighbourhood.
template <class T>
struct InPlacePixel {
  T* samples;
  ptrdiff_t S;
  unsigned r, c;  // parities of its site

  bool isGreen() const { return r == c; }
  int own() const { return r == 0 ? kRed : kBlue; }  // the colour that its row senses beside green
  int opposite() const { return kRed + kBlue - own(); }

  // The samples that were sensed, and those of one channel.
  auto sensed() const {
    return [*this](int dx, int dy) -> int {
      const Site site = siteAt((r + unsigned(dy)) & 1, (c + unsigned(dx)) & 1);
      return samples[dy * S + 3 * dx + sensedChannel(site)];
    };
  }
  auto channel(int which) const {
    return [*this, which](int dx, int dy) -> int { return samples[dy * S + 3 * dx + which]; };
  }
};

// One pass: visit(pixel) for every image pixel.
template <class T, class Visit>
void passInPlace(const Region& region, T* work, Visit visit) {
  const WorkLayout layout = guardedLayout(region);
  for (uint32_t j = 0; j < region.Hf; ++j)
    for (uint32_t i = 0; i < region.Wf; ++i)
      visit(InPlacePixel<T>{work + layout.row(j) + 3 * i, static_cast<ptrdiff_t>(layout.S),
                            (region.r0 + j) & 1, (region.c0 + i) & 1});
}

}  // namespace vistrel::core
