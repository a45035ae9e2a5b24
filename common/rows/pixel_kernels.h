// The functions that fill a row of pixels, as every level compiles them.
#pragma once

#include <cstddef>

#include "common/mosaic.h"
#include "common/rows/row_sink.h"

namespace vistrel::core {

// Rows: the half rows that it reads.
template <class T, class Rows>
using PixelKernel = void (*)(const Rows& rows, size_t columns, RowSink<T>& sink);

template <class T, class Rows>
struct PixelKernels {
  // By column parity of the green sites, then by whether the row's other sites are red.
  PixelKernel<T, Rows> of[2][2];

  PixelKernel<T, Rows> ofRow(const Mosaic& mosaic, int y) const {
    return of[mosaic.greenParity(y)][mosaic.isRedRow(y)];
  }
};

}  // namespace vistrel::core
