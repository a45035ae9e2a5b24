// The functions that fill a row of pixels, as every level compiles them.
#pragma once

#include <cstddef>

#include "common/rows/row_sink.h"

namespace vistrel::core {

// Rows: the half rows that it reads.
template <class T, class Rows>
using PixelKernel = void (*)(const Rows& rows, size_t columns, RowSink<T>& sink);

// By column parity of the green sites, then by whether the row's other sites are red.
template <class T, class Rows>
struct PixelKernels {
  PixelKernel<T, Rows> of[2][2];
};

}  // namespace vistrel::core
