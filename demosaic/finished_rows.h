// Row kernels that finish pixels in registers: they store bytes in the caller's format.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/mosaic.h"
#include "common/rows/nontemporal.h"

namespace vistrel::core {

// Formats of a finished pixel. The first of its three samples is blue, or red if the order of the
// mosaic says so; luma takes blue first.
enum class Finish { three, alphaLast, alphaFirst, luma };
constexpr int kFinishes = 4;
constexpr size_t bytesOf(Finish finish) {
  return finish == Finish::three ? 3 : finish == Finish::luma ? 1 : 4;
}

// Finished samples are min(s >> shift, 255).
template <class Rows>
using FinishedKernel = void (*)(const Rows& rows, size_t columns, unsigned shift, uint8_t* pixels,
                                Prefetcher next);

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
};

}  // namespace vistrel::core
