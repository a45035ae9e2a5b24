#include "common/level.h"
#include "common/simd.h"
#include "demosaic/demosaic.h"
#include "demosaic/guarded.h"
#include "demosaic/in_place.h"

#define VISTREL_BODY "demosaic/bilinear_rows.inl"
#include "common/each_level.inl"

namespace vistrel {

namespace {

template <class T>
void bilinear(const Conversion<T>& c) {
  if (c.region.Wf < 2 || c.region.Hf < 2) {
    spreadMosaic(c.region, c.sourceStride, c.pSrc, c.work);
    interpolateInPlace(c.region, c.work, base::Bilinear{});
    return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  }
  const auto& rows = *VISTREL_BY_LEVEL(kBilinearRows<T>);
  sweepOnePass(c, [&](const MosaicRows<T>& mosaic, int y, T* pixels, RowCopies<T>& copies) {
    rows[mosaic.greenParity(y)][mosaic.isRedRow(y)](mosaic.template window<1>(y), mosaic.columns(),
                                                   pixels, copies);
  });
}

}  // namespace

void ImageColorBilinear(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                        uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                        uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const ColourOutput output(nRoiWidth, nFormat, nBinning, true);
  bilinear<uint8_t>({region, pSrc, nImgWidth, reinterpret_cast<uint8_t*>(g_pwBGRBuff[nIndex]), pDst,
                     nRoiHeight, output});
}

void ImageColorBilinear(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                        uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                        uint8_t* pDst, uint32_t nDstBits, uint32_t nSrcBits) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const ColourOutput output(nRoiWidth, nSrcBits, nFormat, nLutMode, g_pwUserLUT[nIndex], nBinning,
                            nDstBits, true);
  bilinear<uint16_t>({region, pSrc, nImgWidth, g_pwBGRBuff[nIndex], pDst, nRoiHeight, output});
}

}  // namespace vistrel
