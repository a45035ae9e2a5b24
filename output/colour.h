// Three-sample-a-pixel images (blue, green, red) to the output formats.
#pragma once

#include <cstdint>

#include "output/table.h"

namespace vistrel::core {

// The binning members. nStride counts pixels for BGR and ARGB; for gray it counts samples, and
// the 1x1 gray member does not read it: its rows lie 3 * (nWidth + 4) samples apart.
// Source is const uint8_t*, const uint16_t* or CLutTransform.
#define VISTREL_BINNING_MEMBER(name)                                                 \
  template <class Source, class Sample>                                              \
  void name(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination, \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust)
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
#undef VISTREL_BINNING_MEMBER

// Converts a finished image. bGuarded: nonzero when pImage is a work buffer with its guard of
// two pixels on every side, 0 when rows follow each other without one. Formats or binnings
// that there are not leave pDst as it was.
void ConvertToOutputFormat8(const uint8_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                            uint8_t* pDst, uint32_t nFormat, uint32_t nBinning, int32_t bGuarded);

void ConvertToOutputFormat16(const uint16_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                             uint32_t nSrcBits, void* pDst, uint32_t nFormat, uint32_t nLutMode,
                             const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits,
                             int32_t bGuarded);

}  // namespace vistrel::core
