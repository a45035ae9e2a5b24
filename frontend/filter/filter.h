// The 3x3 filters, one for each kind of image. A filter copies the image to other memory,
// reads only that copy and changes the image in place; outer rows and columns stay
// unchanged. nImgWidth counts pixels. For single-channel images the pointer values 0 and 1 select
// the fixed filters.
#pragma once

#include <cstdint>

#include "vistrel/vistrel.h"

namespace vistrel::core {

// ImgFilter with memory for the copy: as many bytes as the image has, and a vector beyond.
void filterImage(void* copy, const _FLT_3X3* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                 uint32_t nImgHeight, void* pImage);

// With the stream's work buffer.
void ImgFilterGray8(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                    uint32_t nImgHeight, uint8_t* pImage);
void ImgFilterGray16(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                     uint32_t nImgHeight, uint16_t* pImage);
void ImgFilterRGB3(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                   uint32_t nImgHeight, uint8_t* pImage);
void ImgFilterRGB4(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                   uint32_t nImgHeight, uint8_t* pImage);

}  // namespace vistrel::core
