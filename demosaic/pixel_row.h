// The function that fills a row of pixels, as every level compiles it.
#pragma once

#include "common/stream.h"
#include "demosaic/mosaic_rows.h"

namespace vistrel {

// Where the samples of a row are wanted once more while they are at hand.
template <class T>
struct RowCopies {
  T* plain = nullptr;
  StreamCopy work, result;  // past the caches
};

template <class T>
using PixelRow = void (*)(const MosaicWindow<T, 1>& window, size_t columns, T* pixels,
                          RowCopies<T>& copies);

}  // namespace vistrel
