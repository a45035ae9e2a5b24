// The binning members, by name: one for each binning factor, pack and source, and a table that can
// replace the source. The library itself writes rows with RowWriter.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "common/arith.h"
#include "common/work_layout.h"
#include "output/row_writer.h"
#include "output/table.h"

namespace vistrel::core {

// Replaces a pointer to samples: element i is the table's byte for sample i.
struct CLutTransform {
  const uint8_t* pLut;
  const uint16_t* pSrc;
  uint32_t nShift;

  uint8_t operator[](size_t i) const {
    return pLut[std::min<uint32_t>(shr(pSrc[i], nShift), kTableEntries - 1)];
  }
  CLutTransform operator+(size_t n) const { return {pLut, pSrc + n, nShift}; }
};

// stride: distance between two source rows, in samples.
template <class Source, class Sample>
void binImage(Pack pack, unsigned binning, Source source, size_t stride, uint32_t nSrcBits,
              Sample* destination, uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits,
              uint32_t nShiftAdjust) {
  if constexpr (std::is_same_v<Source, CLutTransform>)
    RowWriter(pack, binning, stride, nWidth, source.pLut, source.nShift)
        .rows(source.pSrc, destination, nHeight);
  else
    RowWriter(pack, depthOf<std::remove_pointer_t<Source>, Sample>(), binning, stride, nWidth,
              reductionOf<Sample>(nSrcBits, nDstBits, nShiftAdjust))
        .rows(source, destination, nHeight);
}

// A binning member: shifts each sample right, sums blocks of N x N, divides by N and clamps. Source
// is const uint8_t*, const uint16_t* or CLutTransform. nStride counts samples for mono and gray,
// pixels for BGR and ARGB. The 1x1 gray member ignores it: its rows are 3 * (nWidth + 4) samples
// apart.
#define VISTREL_BINNING_MEMBER(name, pack, binning, stride)                                   \
  template <class Source, class Sample>                                                       \
  void name(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,          \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) {    \
    binImage(pack, binning, source, stride, nSrcBits, destination, nWidth, nHeight, nDstBits, \
             nShiftAdjust);                                                                   \
  }

#define VISTREL_BINNING_MEMBERS(family, pack, stride)     \
  VISTREL_BINNING_MEMBER(family##1x1, pack, 1, stride(1)) \
  VISTREL_BINNING_MEMBER(family##2x2, pack, 2, stride(2)) \
  VISTREL_BINNING_MEMBER(family##3x3, pack, 3, stride(3)) \
  VISTREL_BINNING_MEMBER(family##4x4, pack, 4, stride(4))

#define VISTREL_SAMPLES(binning) nStride
#define VISTREL_PIXELS(binning) size_t{kChannels} * nStride
#define VISTREL_GRAY(binning) grayStride(binning, nStride, nWidth)

VISTREL_BINNING_MEMBERS(ImageBinning, Pack::mono, VISTREL_SAMPLES)
VISTREL_BINNING_MEMBERS(ImageBGRBinning, Pack::bgr, VISTREL_PIXELS)
VISTREL_BINNING_MEMBERS(ImageARGBBinning, Pack::argb, VISTREL_PIXELS)
VISTREL_BINNING_MEMBERS(ImageGrayBinning, Pack::gray, VISTREL_GRAY)

#undef VISTREL_BINNING_MEMBER
#undef VISTREL_BINNING_MEMBERS
#undef VISTREL_SAMPLES
#undef VISTREL_PIXELS
#undef VISTREL_GRAY

}  // namespace vistrel::core
