// Converts images of three samples per pixel (blue, green, red) to the output formats.
#pragma once

#include <cstdint>

namespace vistrel::core {

// Converts a finished image. bGuarded: nonzero if pImage is a work buffer with its guard of two
// pixels on every side, 0 if rows follow each other without one. Unknown formats and binnings leave
// pDst unchanged.
void ConvertToOutputFormat8(const uint8_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                            uint8_t* pDst, uint32_t nFormat, uint32_t nBinning, int32_t bGuarded);

void ConvertToOutputFormat16(const uint16_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                             uint32_t nSrcBits, void* pDst, uint32_t nFormat, uint32_t nLutMode,
                             const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits,
                             int32_t bGuarded);

}  // namespace vistrel::core
