// Binning, depth reduction and packing into the output formats.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/reference/arith.h"

namespace reference {

// Replaces a pointer to samples: element i is the table's byte for sample i. An index past the
// table, which only a sample above its own depth can cause, reads the last entry.
struct CLutTransform {
  const uint8_t* pLut;
  const uint16_t* pSrc;
  uint32_t nShift;

  uint8_t operator[](size_t i) const {
    const uint32_t index = shr(pSrc[i], nShift);
    return pLut[index < 1024 ? index : 1023];
  }
};

void Create10To8BitLUT(uint8_t* pTable, uint32_t nLutMode, const uint16_t* pUserLut,
                       int32_t nUserShift);

// The binning members. Source is const uint8_t*, const uint16_t* or CLutTransform.
#define REFERENCE_MEMBER(name)                                                       \
  template <class Source, class Sample>                                              \
  void name(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination, \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust)
REFERENCE_MEMBER(ImageBinning1x1);
REFERENCE_MEMBER(ImageBinning2x2);
REFERENCE_MEMBER(ImageBinning3x3);
REFERENCE_MEMBER(ImageBinning4x4);
REFERENCE_MEMBER(ImageBGRBinning1x1);
REFERENCE_MEMBER(ImageBGRBinning2x2);
REFERENCE_MEMBER(ImageBGRBinning3x3);
REFERENCE_MEMBER(ImageBGRBinning4x4);
REFERENCE_MEMBER(ImageARGBBinning1x1);
REFERENCE_MEMBER(ImageARGBBinning2x2);
REFERENCE_MEMBER(ImageARGBBinning3x3);
REFERENCE_MEMBER(ImageARGBBinning4x4);
REFERENCE_MEMBER(ImageGrayBinning1x1);
REFERENCE_MEMBER(ImageGrayBinning2x2);
REFERENCE_MEMBER(ImageGrayBinning3x3);
REFERENCE_MEMBER(ImageGrayBinning4x4);
#undef REFERENCE_MEMBER

void Image8BitGrayScale(const uint8_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                        uint32_t nSrcBits, uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nBinning);
void Image8BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                        uint32_t nSrcBits, uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nBinning,
                        uint32_t nLutMode, const uint16_t* pUserLut);
void Image16BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                         uint32_t nSrcBits, uint16_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                         uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nDstBits,
                         uint32_t nBinning, uint32_t nLutMode);

void ConvertToOutputFormat8(const uint8_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                            uint8_t* pDst, uint32_t nFormat, uint32_t nBinning, int32_t bGuarded);
void ConvertToOutputFormat16(const uint16_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                             uint32_t nSrcBits, void* pDst, uint32_t nFormat, uint32_t nLutMode,
                             const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits,
                             int32_t bGuarded);

}  // namespace reference
