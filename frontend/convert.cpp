#include "demosaic/demosaic.h"
#include "output/colour.h"
#include "output/mono.h"
#include "streams/registry.h"
#include "vistrel/vistrel.h"

namespace vistrel::core {

namespace {

uint32_t thresholdOf(uint32_t nAlgorithm) { return nAlgorithm >> 8 & 0xFF; }

// Null for an unknown code.
const AlgorithmRow* algorithmOf(uint32_t nAlgorithm) { return findAlgorithm(nAlgorithm & 0xFF); }

}  // namespace
}  // namespace vistrel::core

using namespace vistrel::core;

uint32_t ImgConvert8(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                     uint32_t nBinning, uint32_t nImgWidth, uint32_t nImgHeight, uint32_t nRoiX,
                     uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                     void* pDst, uint32_t nSrcBits, uint32_t bSkipDemosaic) {
  uint8_t* const destination = static_cast<uint8_t*>(pDst);
  if (nFormat == IMG_FMT_MONO8) {
    Image8BitGrayScale(pSrc, nImgWidth, nImgHeight, nSrcBits, destination, nRoiX, nRoiY, nRoiWidth,
                       nRoiHeight, nBinning);
    return 1;
  }
  if (nFormat == IMG_FMT_MONO16 || nFormat == IMG_FMT_GRAY16) return 0;
  if (bSkipDemosaic) {
    ConvertToOutputFormat8(pSrc, nRoiWidth, nRoiHeight, destination, nFormat, nBinning, 0);
    return 1;
  }
  const AlgorithmRow* const algorithm = algorithmOf(nAlgorithm);
  if (!algorithm) return 0;
  demosaic(*algorithm, ID2Index(nID), thresholdOf(nAlgorithm), nImgWidth, nBayer, nBinning, nFormat,
           nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, destination);
  return 1;
}

uint32_t ImgConvert16(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                      uint32_t nBinning, uint32_t nDstBits, uint32_t nLutMode, uint32_t nImgWidth,
                      uint32_t nImgHeight, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                      uint32_t nRoiHeight, const uint16_t* pSrc, void* pDst, uint32_t nSrcBits,
                      uint32_t bSkipDemosaic) {
  const unsigned nIndex = ID2Index(nID);
  if (nFormat == IMG_FMT_MONO8) {
    Image8BitGrayScale(pSrc, nImgWidth, nImgHeight, nSrcBits, static_cast<uint8_t*>(pDst), nRoiX,
                       nRoiY, nRoiWidth, nRoiHeight, nBinning, nLutMode, g_pwUserLUT[nIndex]);
    return 1;
  }
  if (nFormat == IMG_FMT_MONO16) {
    Image16BitGrayScale(pSrc, nImgWidth, nImgHeight, nSrcBits, static_cast<uint16_t*>(pDst), nRoiX,
                        nRoiY, nRoiWidth, nRoiHeight, nDstBits, nBinning, nLutMode);
    return 1;
  }
  if (bSkipDemosaic) {
    ConvertToOutputFormat16(pSrc, nRoiWidth, nRoiHeight, nSrcBits, pDst, nFormat, nLutMode,
                            g_pwUserLUT[nIndex], nBinning, nDstBits, 0);
    return 1;
  }
  const AlgorithmRow* const algorithm = algorithmOf(nAlgorithm);
  if (!algorithm) return 0;
  demosaic(*algorithm, nIndex, thresholdOf(nAlgorithm), nImgWidth, nBayer, nBinning, nFormat,
           nLutMode, nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, static_cast<uint8_t*>(pDst),
           nDstBits, nSrcBits);
  return 1;
}
