// The kernels that store a row of finished pixels, compiled for each level.
#pragma once

#include <cstddef>

#include "common/mosaic.h"
#include "common/rows/row_sink.h"

namespace vistrel::core {

// Rows: the half rows that the kernel reads.
template <class T, class Rows>
using PixelKernel = void (*)(const Rows& rows, size_t columns, RowSink<T>& sink);

template <class T, class Rows>
struct PixelKernels {
  // Indexed by the column parity of the green sites, then by whether the row's other sites are red.
  PixelKernel<T, Rows> of[2][2];

  PixelKernel<T, Rows> ofRow(const Mosaic& mosaic, int y) const {
    return of[mosaic.greenParity(y)][mosaic.isRedRow(y)];
  }
};

}  // namespace vistrel::core
