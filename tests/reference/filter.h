// 3x3 filters of finished images.
#pragma once

#include <cstdint>

namespace reference {

// pFilter: ten 32-bit values, the divisor and the nine weights; or, for single-channel formats, the
// pointer values 0 (a box) and 1 (five taps of the mosaic).
uint32_t ImgFilter(uint32_t nID, const void* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                   uint32_t nImgHeight, void* pImage);

void ImgFilterGray8(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                    uint8_t* pImage);
void ImgFilterGray16(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                     uint16_t* pImage);
void ImgFilterRGB3(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                   uint8_t* pImage);
void ImgFilterRGB4(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                   uint8_t* pImage);

}  // namespace reference
