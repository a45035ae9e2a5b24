// libVistrel's conversions of a mosaic: an algorithm fills the stream's work buffer, which is then
// converted into pDst.
#pragma once

#include <cstdint>

#include "demosaic/algorithms.h"

namespace vistrel::core {

// nThreshold, 0..255 on the scale of a byte, only affects edge: it smooths a green sample that
// differs from those around it by no more than that.
void demosaic(const AlgorithmRow& algorithm, uint32_t nIndex, uint32_t nThreshold,
              uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nFormat,
              uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
              const uint8_t* pSrc, uint8_t* pDst);
void demosaic(const AlgorithmRow& algorithm, uint32_t nIndex, uint32_t nThreshold,
              uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nFormat,
              uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
              uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
              uint32_t nSrcBits);

}  // namespace vistrel::core
