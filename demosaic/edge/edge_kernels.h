// The row kernels of the edge demosaic, compiled for each level.
#pragma once

#include <type_traits>

#include "common/depth.h"
#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// The measures of a row's red or blue sites.
template <class Lane>
struct MeasureRow {
  Lane *columnActivity3, *columnActivity5, *rowActivity3, *rowActivity5, *inRow, *inColumn;
};

template <class Lane>
struct MeasureWindow {
  MeasureRow<Lane> row[3];
};

// The input for a row of pixels.
template <class T, class Lane>
struct EdgeWindow {
  HalfRowWindow<T, 1> mosaic;
  MeasureWindow<Lane> measures;
  Lane thresholds[4];
  int limit;
};

// The kernels of a level.
template <class T, class Lane>
struct EdgeLaneKernels {
  // Indexed by the column parity of the red or blue sites, of which the row has n.
  void (*measure[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, const MeasureRow<Lane>& to);
  PixelKernels<T, EdgeWindow<T, Lane>> pixels;
};

// Sums of samples of at most twelve bits fit lanes of 16 bits; others need twice the sample's
// length.
template <class T>
struct EdgeKernels {
  T (*split)(const T* source, size_t columns, T* even, T* odd);
  EdgeLaneKernels<T, int16_t> narrow;
  EdgeLaneKernels<T, Widened<T>> wide;

  template <class Lane>
  const EdgeLaneKernels<T, Lane>& of() const {
    if constexpr (std::is_same_v<Lane, int16_t>)
      return narrow;
    else
      return wide;
  }
};

}  // namespace vistrel::core
