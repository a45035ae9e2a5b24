// Row kernels that finish pixels in registers: they store bytes in the caller's format.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/mosaic.h"
#include "common/rows/nontemporal.h"
#include "output/pixels.h"

namespace vistrel::core {

// Formats of a finished pixel. The first of its three samples is blue, or red if the order of the
// mosaic says so; luma and chroma take
// blue first. ycc420 makes luma, and the sums that chroma is made of (pixels.h).
enum class Finish { three, alphaLast, alphaFirst, luma, ycc420 };
constexpr int kFinishes = 5;
constexpr size_t bytesOf(Finish finish) {
  switch (finish) {
    case Finish::three: return 3;
    case Finish::luma:
    case Finish::ycc420: return 1;
    default: return 4;
  }
}

// Where a row's finished pixels go.
struct FinishedPlace {
  uint8_t* pixels;
  PairSums sums;  // of ycc420
};

// Finished samples are min(s >> shift, 255).
template <class Rows>
using FinishedKernel = void (*)(const Rows& rows, size_t columns, unsigned shift,
                                const FinishedPlace& to, Prefetcher next);

// By format, by column parity of the green sites, and by whether the other sites are red.
template <class Rows>
struct FinishedKernels {
  FinishedKernel<Rows> of[kFinishes][2][2];

  FinishedKernel<Rows> ofRow(Finish finish, const Mosaic& mosaic, int y) const {
    return of[static_cast<int>(finish)][mosaic.greenParity(y)][mosaic.isRedRow(y)];
  }
};

// How an algorithm finishes pixels. They begin at the frame's column `left`, which is even.
struct Finishing {
  Finish finish;
  unsigned shift;
  size_t left, width;
  const PairSums* sums = nullptr;  // of ycc420: where those of the current row go
};

}  // namespace vistrel::core
