// The work buffer and the demosaic functions. T is uint8_t or uint16_t throughout.
#pragma once

#include <cstdint>

namespace reference {

void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                      uint8_t* pWork);
void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                      uint16_t* pWork);

#define REFERENCE_DEMOSAIC(name)                                                          \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,      \
            uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,         \
            uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst);                     \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,      \
            uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,          \
            uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst, \
            uint32_t nDstBits, uint32_t nSrcBits)
REFERENCE_DEMOSAIC(ImageColorBilinear);
#undef REFERENCE_DEMOSAIC

}  // namespace reference
