#include "cfa/ahd/ahd.h"

#include "demosaic/primitive_call.h"

namespace vistrel::core {

namespace {

constexpr int kSmallestSide = 5;

template <class T>
void ahd(const Conversion<T>& c) {
  const PrimitiveCall<T> call(c);
  if (call.isRefused(kSmallestSide)) return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  AhdRegion<T> region(call.frame, call.roi, static_cast<int>(scaling(c)));
  convertRegion(c, call.roi, region);
}

VISTREL_DEFINE_DEMOSAIC_IN(compactLayout, demosaicAhdToOutput, ahd)

}  // namespace
}  // namespace vistrel::core

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nRoiX, unsigned nRoiY, unsigned nRoiWidth,
                           unsigned nRoiHeight, unsigned char* pSrc, unsigned char* pDst) {
  vistrel::core::demosaicAhdToOutput(nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY,
                                     nRoiWidth, nRoiHeight, pSrc, pDst);
}

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nLutMode, unsigned nRoiX, unsigned nRoiY,
                           unsigned nRoiWidth, unsigned nRoiHeight, unsigned short* pSrc,
                           unsigned char* pDst, unsigned nDstBits, unsigned nSrcBits) {
  vistrel::core::demosaicAhdToOutput(nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode, nRoiX,
                                     nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
}
