// The function that fills a row of pixels, as every level compiles it.
#pragma once

#include <cstddef>

#include "common/half_rows.h"
#include "common/stream.h"

namespace vistrel {

// Where the samples of a row are wanted once more while they are at hand, and what is fetched
// meanwhile.
template <class T>
struct RowCopies {
  T* plain = nullptr;
  StreamCopy work, result;  // past the caches
  FetchAhead source,
      changedResult;  // the next row of the mosaic; a result that is not just written
};

// Rows: the half rows that it reads.
template <class T, class Rows>
using PixelRow = void (*)(const Rows& rows, size_t columns, T* pixels, RowCopies<T>& copies);

// By column parity of the green sites, then by whether the row's other sites are red.
template <class T, class Rows>
struct PixelRows {
  PixelRow<T, Rows> of[2][2];
};

}  // namespace vistrel
