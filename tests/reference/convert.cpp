#include "tests/reference/convert.h"

#include "tests/reference/demosaic.h"
#include "tests/reference/output.h"
#include "tests/reference/registry.h"

namespace reference {

uint32_t ImgConvert8(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                     uint32_t nBinning, uint32_t nImgWidth, uint32_t nImgHeight, uint32_t nRoiX,
                     uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                     void* pDst, uint32_t nSrcBits, uint32_t bSkipDemosaic) {
  const unsigned nIndex = ID2Index(nID);
  uint8_t* const dst = static_cast<uint8_t*>(pDst);
  if (nFormat == 0) {
    Image8BitGrayScale(pSrc, nImgWidth, nImgHeight, nSrcBits, dst, nRoiX, nRoiY, nRoiWidth,
                       nRoiHeight, nBinning);
    return 1;
  }
  if (nFormat == 1 || nFormat == 6) return 0;
  if (bSkipDemosaic != 0) {
    ConvertToOutputFormat8(pSrc, nRoiWidth, nRoiHeight, dst, nFormat, nBinning, 0);
    return 1;
  }
  const uint32_t nThreshold = (nAlgorithm >> 8) & 255;
  if ((nAlgorithm & 255) == 1) {
    ImageColorDemosaicEx(nIndex, nThreshold, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY,
                         nRoiWidth, nRoiHeight, pSrc, dst);
    return 1;
  }
  const auto run = [&](auto demosaic) {
    demosaic(nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY, nRoiWidth, nRoiHeight,
             pSrc, dst);
    return 1U;
  };
#define RUN(name) run([](auto... arguments) { name(arguments...); })
  switch (nAlgorithm & 255) {
    case 0: return RUN(ImageColorBilinear);
    case 2: return RUN(ImageColorNearNeighbor);
    case 3: return RUN(ImageColorGradientLaroche);
    case 4: return RUN(ImageColorGradientHamilton);
    case 5: return RUN(ImageColorVariableGradients);
    case 6: return RUN(ImageColorHueCok);
    case 7: return RUN(ImageColorHueKimmel);
    case 8: return RUN(ImageColorPixelGrouping);
    default: return 0;
  }
#undef RUN
}

uint32_t ImgConvert16(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                      uint32_t nBinning, uint32_t nDstBits, uint32_t nLutMode, uint32_t nImgWidth,
                      uint32_t nImgHeight, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                      uint32_t nRoiHeight, const uint16_t* pSrc, void* pDst, uint32_t nSrcBits,
                      uint32_t bSkipDemosaic) {
  const unsigned nIndex = ID2Index(nID);
  const uint16_t* const pUserLut = g_pwUserLUT[nIndex];
  uint8_t* const dst = static_cast<uint8_t*>(pDst);
  if (nFormat == 0) {
    Image8BitGrayScale(pSrc, nImgWidth, nImgHeight, nSrcBits, dst, nRoiX, nRoiY, nRoiWidth,
                       nRoiHeight, nBinning, nLutMode, pUserLut);
    return 1;
  }
  if (nFormat == 1) {
    Image16BitGrayScale(pSrc, nImgWidth, nImgHeight, nSrcBits, static_cast<uint16_t*>(pDst), nRoiX,
                        nRoiY, nRoiWidth, nRoiHeight, nDstBits, nBinning, nLutMode);
    return 1;
  }
  if (bSkipDemosaic != 0) {
    ConvertToOutputFormat16(pSrc, nRoiWidth, nRoiHeight, nSrcBits, pDst, nFormat, nLutMode,
                            pUserLut, nBinning, nDstBits, 0);
    return 1;
  }
  const uint32_t nThreshold = (nAlgorithm >> 8) & 255;
  if ((nAlgorithm & 255) == 1) {
    ImageColorDemosaicEx(nIndex, nThreshold, nImgWidth, nBayer, nBinning, nFormat, nLutMode, nRoiX,
                         nRoiY, nRoiWidth, nRoiHeight, pSrc, dst, nDstBits, nSrcBits);
    return 1;
  }
  const auto run = [&](auto demosaic) {
    demosaic(nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode, nRoiX, nRoiY, nRoiWidth,
             nRoiHeight, pSrc, dst, nDstBits, nSrcBits);
    return 1U;
  };
#define RUN(name) run([](auto... arguments) { name(arguments...); })
  switch (nAlgorithm & 255) {
    case 0: return RUN(ImageColorBilinear);
    case 2: return RUN(ImageColorNearNeighbor);
    case 3: return RUN(ImageColorGradientLaroche);
    case 4: return RUN(ImageColorGradientHamilton);
    case 5: return RUN(ImageColorVariableGradients);
    case 6: return RUN(ImageColorHueCok);
    case 7: return RUN(ImageColorHueKimmel);
    case 8: return RUN(ImageColorPixelGrouping);
    default: return 0;
  }
#undef RUN
}

}  // namespace reference
