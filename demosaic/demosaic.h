// The demosaic functions, in the argument lists that they all share. Each fills the stream's
// work buffer and ends by converting it into pDst.
#pragma once

#include <cstdint>

namespace vistrel::core {

#define VISTREL_DEMOSAIC(name)                                                            \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,      \
            uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,         \
            uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst);                     \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,      \
            uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,          \
            uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst, \
            uint32_t nDstBits, uint32_t nSrcBits)

VISTREL_DEMOSAIC(ImageColorBilinear);           // the plain mean of the nearest sites
VISTREL_DEMOSAIC(ImageColorNearNeighbor);       // nearest neighbours, green along an edge
VISTREL_DEMOSAIC(ImageColorGradientLaroche);    // Laroche and Prescott, US 5,373,322
VISTREL_DEMOSAIC(ImageColorGradientHamilton);   // Hamilton and Adams, US 5,629,734
VISTREL_DEMOSAIC(ImageColorHueCok);             // Cok, US 4,642,678
VISTREL_DEMOSAIC(ImageColorHueKimmel);          // Kimmel 1999, in doubles; packed where OS_IsSSE()
VISTREL_DEMOSAIC(vec_ImageColorHueKimmel);      // the same in packed floats
VISTREL_DEMOSAIC(ImageColorPixelGrouping);      // Lin 2003
VISTREL_DEMOSAIC(ImageColorVariableGradients);  // Chang, Cheung and Pang, 1999

// Edge-sensing colour differences. nThreshold, 0..255 on the scale of a byte, says how much a
// green sample may differ from those around it and still be smoothed.
void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY,
                          uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                          uint8_t* pDst);
void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX,
                          uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                          const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
                          uint32_t nSrcBits);

#undef VISTREL_DEMOSAIC

}  // namespace vistrel::core
