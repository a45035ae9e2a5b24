// The two conversions: they choose the path that a frame takes.
#pragma once

#include <cstdint>

namespace reference {

uint32_t ImgConvert8(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                     uint32_t nBinning, uint32_t nImgWidth, uint32_t nImgHeight, uint32_t nRoiX,
                     uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                     void* pDst, uint32_t nSrcBits, uint32_t bSkipDemosaic);

uint32_t ImgConvert16(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                      uint32_t nBinning, uint32_t nDstBits, uint32_t nLutMode, uint32_t nImgWidth,
                      uint32_t nImgHeight, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                      uint32_t nRoiHeight, const uint16_t* pSrc, void* pDst, uint32_t nSrcBits,
                      uint32_t bSkipDemosaic);

}  // namespace reference
