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
REFERENCE_DEMOSAIC(ImageColorGradientLaroche);
REFERENCE_DEMOSAIC(ImageColorGradientHamilton);
REFERENCE_DEMOSAIC(ImageColorVariableGradients);
REFERENCE_DEMOSAIC(ImageColorHueCok);
REFERENCE_DEMOSAIC(ImageColorHueKimmel);
REFERENCE_DEMOSAIC(vec_ImageColorHueKimmel);
REFERENCE_DEMOSAIC(ImageColorPixelGrouping);
REFERENCE_DEMOSAIC(ImageColorNearNeighbor);
REFERENCE_DEMOSAIC(ImageColorDemosaicAHD);
#undef REFERENCE_DEMOSAIC

void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY,
                          uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                          uint8_t* pDst);
void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX,
                          uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                          const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
                          uint32_t nSrcBits);

// One pixel of variable gradients: writes its two missing channels.
void calcOneGreenCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneGreenCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneRedBluCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneRedBluCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel);

// One pixel of pixel grouping.
uint8_t calcOneGreen(uint8_t* pPixel, unsigned nStride, unsigned nMode);
uint16_t calcOneGreen(uint16_t* pPixel, unsigned nStride, unsigned nMode);
void calcOneRedBlu8(uint8_t* pPixel, unsigned nStride, uint8_t* pFirst, uint8_t* pSecond,
                    unsigned nMode);
void calcOneRedBlu16(uint16_t* pPixel, unsigned nStride, uint16_t* pFirst, uint16_t* pSecond,
                     unsigned nMode);
int HueTransit(int L1, int L2, int L3, int V1, int V3);

// Selects the path of ImageColorHueKimmel: if nonzero, the single-precision one.
extern int32_t g_bIsSSE;
int32_t OS_IsSSE();

// The approximate reciprocal root of the single-precision path. At the start it is the processor's
// vector operation, or 1 / sqrt if there is none; a test may replace it.
extern float (*g_pReciprocalRoot)(float);
float VectorReciprocalRoot(float x);

}  // namespace reference
