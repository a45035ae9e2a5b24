// Formulas applied to the work buffer itself, pixel by pixel, in the order of the rows. It serves
// regions of a single row or column, where guard and image are copies of what the buffer held.
#pragma once

#include "demosaic/work_buffer.h"

namespace vistrel {

template <class T>
struct WorkBufferTap {
  const T* pixel;
  ptrdiff_t S;
  unsigned r, c;  // parities of the pixel's site

  uint32_t operator()(int dx, int dy) const {
    const Site site = siteAt((r + unsigned(dy)) & 1, (c + unsigned(dx)) & 1);
    return pixel[dy * S + 3 * dx + sensedChannel(site)];
  }
};

template <class T, class Formulas>
void interpolateInPlace(const Region& region, T* work, Formulas) {
  const GuardedLayout layout(region);
  for (uint32_t j = 0; j < region.Hf; ++j)
    for (uint32_t i = 0; i < region.Wf; ++i) {
      const unsigned r = (region.r0 + j) & 1, c = (region.c0 + i) & 1;
      T* pixel = work + layout.row(j) + 3 * i;
      const WorkBufferTap<T> m{pixel, static_cast<ptrdiff_t>(layout.S), r, c};
      const int own = r == 0 ? kRed : kBlue, opposite = kBlue + kRed - own;
      if (r == c) {
        pixel[own] = static_cast<T>(Formulas::along(m));
        pixel[opposite] = static_cast<T>(Formulas::across(m));
      } else {
        pixel[kGreen] = static_cast<T>(Formulas::green(m));
        pixel[opposite] = static_cast<T>(Formulas::opposite(m));
      }
    }
}

}  // namespace vistrel
