// Row kernels that store bytes in the caller's format directly, without a row of samples between.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/mosaic.h"
#include "output/direct_sink.h"

namespace vistrel::core {

// The formats that they store. The first of three samples is blue, or red if the order of the
// mosaic says so; luma and chroma take blue first. ycc420 makes luma, and the sums that chroma is
// made of (pixels.h).
enum class DirectFormat { three, alphaLast, alphaFirst, luma, ycc420 };
constexpr int kDirectFormats = 5;
constexpr size_t bytesOf(DirectFormat format) {
  switch (format) {
    case DirectFormat::three: return 3;
    case DirectFormat::luma:
    case DirectFormat::ycc420: return 1;
    default: return 4;
  }
}

// The samples stored are min(s >> shift, 255).
template <class Rows>
using DirectKernel = void (*)(const Rows& rows, size_t columns, unsigned shift,
                              const DirectRowSink& sink);

// By format, by column parity of the green sites, and by whether the other sites are red.
template <class Rows>
struct DirectKernels {
  DirectKernel<Rows> of[kDirectFormats][2][2];

  DirectKernel<Rows> ofRow(DirectFormat format, const Mosaic& mosaic, int y) const {
    return of[static_cast<int>(format)][mosaic.greenParity(y)][mosaic.isRedRow(y)];
  }
};

// What an algorithm stores directly. Its pixels begin at the frame's column `left`, which is even.
struct DirectJob {
  DirectImageSink& image;
  DirectFormat format;
  unsigned shift;
  size_t left, width;
};

}  // namespace vistrel::core
