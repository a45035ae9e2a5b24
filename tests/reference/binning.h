// The parts that all binning members share: the shift, the ceiling, the sum of a block.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/reference/arith.h"

namespace reference {

inline uint32_t sampleShift(uint32_t nSrcBits, uint32_t nDstBits, uint32_t nShiftAdjust) {
  return (nSrcBits - nDstBits - nShiftAdjust) % 32;
}

template <class Sample>
uint32_t ceilingOf(uint32_t nDstBits) {
  return static_cast<Sample>(shl(1, nDstBits) - 1);
}

template <unsigned N>
uint32_t reduce(uint32_t sum) {
  switch (N) {
    case 1: return sum;
    case 2: return sum >> 1;
    case 3: return sum / 3;
    default: return sum >> 2;
  }
}

// The binned value of channel c of the block of N x N pixels that begins at sample `base`.
template <unsigned N, class Source>
uint32_t binnedChannel(const Source& source, size_t base, size_t rowStep, unsigned c,
                       uint32_t shift) {
  uint32_t sum = 0;
  for (unsigned i = 0; i < N; ++i) {
    for (unsigned j = 0; j < N; ++j) {
      size_t at = base + i * rowStep + 3 * j + c;
      if (N == 3 && i == 1 && j == 0 && c > 0) at += 1;  // the irregular tap
      sum += shr(source[at], shift);
    }
  }
  return reduce<N>(sum);
}

// Instantiates a member for one pair of source and sample, in its four sizes.
#define REFERENCE_INSTANTIATE_ONE(name, Source, Sample)                                       \
  template void name<Source, Sample>(Source, uint32_t, uint32_t, Sample*, uint32_t, uint32_t, \
                                     uint32_t, uint32_t);
#define REFERENCE_INSTANTIATE(family, Source, Sample)    \
  REFERENCE_INSTANTIATE_ONE(family##1x1, Source, Sample) \
  REFERENCE_INSTANTIATE_ONE(family##2x2, Source, Sample) \
  REFERENCE_INSTANTIATE_ONE(family##3x3, Source, Sample) \
  REFERENCE_INSTANTIATE_ONE(family##4x4, Source, Sample)

}  // namespace reference
