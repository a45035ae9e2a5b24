// The 3x3 filters. A filter copies the image to other memory, reads only that copy and changes the
// image in place; outer rows and columns stay unchanged. nImgWidth counts pixels. For images of one
// channel the pointer values 0 and 1 select the fixed filters.
#pragma once

#include <cstdint>

#include "vistrel/vistrel.h"

namespace vistrel::core {

// ImgFilter with memory for the copy: as many bytes as the image has, and a vector beyond.
void filterImage(void* copy, const _FLT_3X3* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                 uint32_t nImgHeight, void* pImage);

}  // namespace vistrel::core
