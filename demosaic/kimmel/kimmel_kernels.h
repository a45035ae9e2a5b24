// The row kernels of Kimmel's passes, compiled for each level.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// The half rows that a pass reads. own: the colour that a row senses besides green; opposite: the
// colour of the rows above and below.
template <class Real>
struct KimmelDiagonals {
  HalfRowWindow<Real, 2> mosaic;
  HalfRowWindow<Real, 1> green, hue;
};
template <class Real>
struct KimmelCross {
  HalfRowWindow<Real, 1> green, own, ownHue, opposite, oppositeHue;
};

// A complete row, by column parity.
template <class T>
struct CompleteHalves {
  const T *own[2], *green[2], *opposite[2];
};

// The kernels of a level, indexed by the column parity of the sites that they fill. `opposite` and
// `oppositeInTail` fill elements from `from` on: the first with stored hues, the second, at the end
// of rows, with plain ones.
template <class T, class Real>
struct KimmelKernels {
  using Opposite = void (*)(const KimmelDiagonals<Real>& rows, size_t from, size_t n, Real* colour,
                            Real* hue);

  void (*toReals)(const T* samples, ptrdiff_t from, ptrdiff_t to, Real* reals);
  void (*toSamples)(const Real* reals, size_t n, T* samples);
  void (*green[2])(const HalfRowWindow<Real, 2>& mosaic, size_t n, Real* green, Real* hue);
  Opposite opposite[2], oppositeInTail[2];
  void (*atGreen[2])(const KimmelCross<Real>& rows, size_t n, Real* own, Real* opposite);
  PixelKernels<T, CompleteHalves<T>> pixels;
};

}  // namespace vistrel::core
