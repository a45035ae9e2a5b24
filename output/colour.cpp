#include "output/colour.h"

#include "output/colour_output.h"

namespace vistrel::core {

void ConvertToOutputFormat8(const uint8_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                            uint8_t* pDst, uint32_t nFormat, uint32_t nBinning, int32_t bGuarded) {
  ColourOutput(nRoiWidth, nFormat, nBinning, bGuarded).convert(pImage, pDst, nRoiHeight);
}

void ConvertToOutputFormat16(const uint16_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                             uint32_t nSrcBits, void* pDst, uint32_t nFormat, uint32_t nLutMode,
                             const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits,
                             int32_t bGuarded) {
  ColourOutput(nRoiWidth, nSrcBits, nFormat, nLutMode, pUserLut, nBinning, nDstBits, bGuarded)
      .convert(pImage, pDst, nRoiHeight);
}

}  // namespace vistrel::core
