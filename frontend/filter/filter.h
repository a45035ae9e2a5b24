// The kernel filters, one for each kind of image. Each first copies the image to the stream's work
// buffer, reads that copy alone and changes the image in place; its outer rows and columns stay.
// nImgWidth counts pixels; gray images take the pointer values 0 and 1 for the fixed filters.
#pragma once

#include <cstdint>

#include "vistrel/vistrel.h"

namespace vistrel::core {

void ImgFilterGray8(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                    uint32_t nImgHeight, uint8_t* pImage);
void ImgFilterGray16(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                     uint32_t nImgHeight, uint16_t* pImage);
void ImgFilterRGB3(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                   uint32_t nImgHeight, uint8_t* pImage);
void ImgFilterRGB4(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                   uint32_t nImgHeight, uint8_t* pImage);

}  // namespace vistrel::core
