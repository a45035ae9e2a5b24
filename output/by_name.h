// Only tests call these functions, by name: one for each binning factor, pack and source, and a
// table that can replace the source. The library itself writes rows with RowWriter.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "common/arith.h"
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

// A binning member: shifts each sample right, sums blocks of N x N, divides by N and clamps. Source
// is const uint8_t*, const uint16_t* or CLutTransform. nStride counts samples for mono and gray,
// pixels for BGR and ARGB. The 1x1 gray member ignores it: its rows are 3 * (nWidth + 4) samples
// apart.
#define VISTREL_BINNING_MEMBER(name)                                                 \
  template <class Source, class Sample>                                              \
  void name(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination, \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust)

VISTREL_BINNING_MEMBER(ImageBinning1x1);
VISTREL_BINNING_MEMBER(ImageBinning2x2);
VISTREL_BINNING_MEMBER(ImageBinning3x3);
VISTREL_BINNING_MEMBER(ImageBinning4x4);
VISTREL_BINNING_MEMBER(ImageBGRBinning1x1);
VISTREL_BINNING_MEMBER(ImageBGRBinning2x2);
VISTREL_BINNING_MEMBER(ImageBGRBinning3x3);
VISTREL_BINNING_MEMBER(ImageBGRBinning4x4);
VISTREL_BINNING_MEMBER(ImageARGBBinning1x1);
VISTREL_BINNING_MEMBER(ImageARGBBinning2x2);
VISTREL_BINNING_MEMBER(ImageARGBBinning3x3);
VISTREL_BINNING_MEMBER(ImageARGBBinning4x4);
VISTREL_BINNING_MEMBER(ImageGrayBinning1x1);
VISTREL_BINNING_MEMBER(ImageGrayBinning2x2);
VISTREL_BINNING_MEMBER(ImageGrayBinning3x3);
VISTREL_BINNING_MEMBER(ImageGrayBinning4x4);

}  // namespace vistrel::core
