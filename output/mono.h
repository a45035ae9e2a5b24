// Monochrome frames: crops, bins, reduces and clamps samples in one pass.
#pragma once

#include <cstdint>

namespace vistrel::core {

// 8-bit source, 8-bit result.
void Image8BitGrayScale(const uint8_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                        uint32_t nSrcBits, uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nBinning);

// 16-bit source, 8-bit result.
void Image8BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                        uint32_t nSrcBits, uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nBinning,
                        uint32_t nLutMode, const uint16_t* pUserLut);

// 16-bit source, 16-bit result.
void Image16BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                         uint32_t nSrcBits, uint16_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                         uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nDstBits,
                         uint32_t nBinning, uint32_t nLutMode);

}  // namespace vistrel::core
