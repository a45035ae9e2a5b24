#include "output/colour.h"

#include "output/colour_output.h"
#include "output/members.h"

namespace vistrel::core {

VISTREL_MEMBER(ImageBGRBinning1x1, Pack::bgr, 1, size_t{3} * nStride)
VISTREL_MEMBER(ImageBGRBinning2x2, Pack::bgr, 2, size_t{3} * nStride)
VISTREL_MEMBER(ImageBGRBinning3x3, Pack::bgr, 3, size_t{3} * nStride)
VISTREL_MEMBER(ImageBGRBinning4x4, Pack::bgr, 4, size_t{3} * nStride)
VISTREL_INSTANCES(ImageBGRBinning1x1)
VISTREL_INSTANCES(ImageBGRBinning2x2)
VISTREL_INSTANCES(ImageBGRBinning3x3)
VISTREL_INSTANCES(ImageBGRBinning4x4)

VISTREL_MEMBER(ImageARGBBinning1x1, Pack::argb, 1, size_t{3} * nStride)
VISTREL_MEMBER(ImageARGBBinning2x2, Pack::argb, 2, size_t{3} * nStride)
VISTREL_MEMBER(ImageARGBBinning3x3, Pack::argb, 3, size_t{3} * nStride)
VISTREL_MEMBER(ImageARGBBinning4x4, Pack::argb, 4, size_t{3} * nStride)
VISTREL_INSTANCES_TO_8(ImageARGBBinning1x1)
VISTREL_INSTANCES_TO_8(ImageARGBBinning2x2)
VISTREL_INSTANCES_TO_8(ImageARGBBinning3x3)
VISTREL_INSTANCES_TO_8(ImageARGBBinning4x4)

VISTREL_MEMBER(ImageGrayBinning1x1, Pack::gray, 1,
               grayStride(1, nStride, nWidth))
VISTREL_MEMBER(ImageGrayBinning2x2, Pack::gray, 2,
               grayStride(2, nStride, nWidth))
VISTREL_MEMBER(ImageGrayBinning3x3, Pack::gray, 3,
               grayStride(3, nStride, nWidth))
VISTREL_MEMBER(ImageGrayBinning4x4, Pack::gray, 4,
               grayStride(4, nStride, nWidth))
VISTREL_INSTANCES(ImageGrayBinning1x1)
VISTREL_INSTANCES(ImageGrayBinning2x2)
VISTREL_INSTANCES(ImageGrayBinning3x3)
VISTREL_INSTANCES(ImageGrayBinning4x4)

void ConvertToOutputFormat8(const uint8_t *pImage, uint32_t nRoiWidth,
                            uint32_t nRoiHeight, uint8_t *pDst,
                            uint32_t nFormat, uint32_t nBinning,
                            int32_t bGuarded) {
  ColourOutput(nRoiWidth, nFormat, nBinning, bGuarded)
      .convert(pImage, pDst, nRoiHeight);
}

void ConvertToOutputFormat16(const uint16_t *pImage, uint32_t nRoiWidth,
                             uint32_t nRoiHeight, uint32_t nSrcBits, void *pDst,
                             uint32_t nFormat, uint32_t nLutMode,
                             const uint16_t *pUserLut, uint32_t nBinning,
                             uint32_t nDstBits, int32_t bGuarded) {
  ColourOutput(nRoiWidth, nSrcBits, nFormat, nLutMode, pUserLut, nBinning,
               nDstBits, bGuarded)
      .convert(pImage, pDst, nRoiHeight);
}

} // namespace vistrel::core
