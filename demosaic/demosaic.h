// The demosaic functions, with the argument lists that they share. Each fills the stream's work
// buffer and finally converts it into pDst.
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

VISTREL_DEMOSAIC(ImageColorBilinear);           // the mean of the nearest sites
VISTREL_DEMOSAIC(ImageColorNearNeighbor);       // nearest neighbours; green along edges
VISTREL_DEMOSAIC(ImageColorGradientLaroche);    // Laroche and Prescott, US 5,373,322
VISTREL_DEMOSAIC(ImageColorGradientHamilton);   // Hamilton and Adams, US 5,629,734
VISTREL_DEMOSAIC(ImageColorHueCok);             // Cok, US 4,642,678
VISTREL_DEMOSAIC(ImageColorHueKimmel);          // Kimmel 1999, in doubles; packed where OS_IsSSE()
VISTREL_DEMOSAIC(vec_ImageColorHueKimmel);      // the same in packed floats
VISTREL_DEMOSAIC(ImageColorPixelGrouping);      // Lin 2003
VISTREL_DEMOSAIC(ImageColorVariableGradients);  // Chang, Cheung and Pang, 1999

// Colour differences along edges. nThreshold, 0..255 on the scale of a byte: a green sample is
// smoothed if it differs from those around it by no more than that.
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
