// The binning members by their number, and the arithmetic that they share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "tests/output/by_name.h"

namespace vistrel::core::test {

template <class Source>
using AsRead =
    std::conditional_t<std::is_pointer_v<Source>, const std::remove_pointer_t<Source>*, Source>;

// clang-format off
#define VISTREL_BY_NUMBER(name)                                                               \
  template <class Source, class Sample>                                                       \
  void name(unsigned n, Source source, uint32_t nStride, uint32_t nSrcBits, Sample* pDst,     \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) {    \
    using S = AsRead<Source>;                                                                 \
    constexpr decltype(&core::name##1x1<S, Sample>) members[] = {                             \
        &core::name##1x1<S, Sample>, &core::name##2x2<S, Sample>,                             \
        &core::name##3x3<S, Sample>, &core::name##4x4<S, Sample>};                            \
    members[n - 1](source, nStride, nSrcBits, pDst, nWidth, nHeight, nDstBits, nShiftAdjust); \
  }
// clang-format on
VISTREL_BY_NUMBER(ImageBinning)
VISTREL_BY_NUMBER(ImageBGRBinning)
VISTREL_BY_NUMBER(ImageARGBBinning)
VISTREL_BY_NUMBER(ImageGrayBinning)
#undef VISTREL_BY_NUMBER

// The position that channel c of a colour block of n x n pixels reads in block row i for column j.
// A 3x3 block is irregular in its middle row.
constexpr unsigned colourTap(unsigned n, unsigned c, unsigned i, unsigned j) {
  return 3 * j + c + (n == 3 && i == 1 && j == 0 && c > 0 ? 1 : 0);
}

// The block's sum divided by n, not by n * n: at(index) is a shifted sample.
template <class At, class Tap>
unsigned binned(unsigned n, size_t base, size_t rowStep, At at, Tap tap) {
  unsigned sum = 0;
  for (unsigned i = 0; i < n; ++i)
    for (unsigned j = 0; j < n; ++j) sum += at(base + i * rowStep + tap(i, j));
  return sum / n;
}

// The order of the additions fixes the last bit.
inline unsigned luminance(unsigned blue, unsigned green, unsigned red) {
  return static_cast<unsigned>((green * 0.587 + red * 0.299) + blue * 0.114);
}

}  // namespace vistrel::core::test
