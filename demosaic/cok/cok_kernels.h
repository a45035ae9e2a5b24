// The row kernels of Cok's algorithm, compiled for each level.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// A row's hues, one for each red or blue site, separated by the place of their samples in lanes of
// four bytes. So samples meet their hues without changing lanes.
template <class T>
struct HueParts {
  static constexpr int kParts = 4 / int{sizeof(T)};
  double* part[kParts];

  // The hue of site i; those of sites i + kParts, i + 2 * kParts ... follow.
  double* element(int i) const {
    const int which = i & (kParts - 1);
    return part[which] + (i - which) / kParts;
  }
};

template <class T>
struct HueWindow {
  HueParts<T> row[3];
};

// The input for a row of pixels. green: by column parity; colour: sensed at the other sites.
template <class T>
struct CokRows {
  const T *green[2], *colour;
  HueWindow<T> hues;
};

// The kernels of a level. `hues` is indexed by the column parity of the red or blue sites.
template <class T>
struct CokKernels {
  void (*hues[2])(const HalfRowWindow<T, 1>& mosaic, size_t n, T* green, const HueParts<T>& hues);
  PixelKernels<T, CokRows<T>> pixels;
};

}  // namespace vistrel::core
