#include "cfa/ahd.h"

#include "demosaic/image_functions.h"
#include "demosaic/primitive_call.h"

namespace vistrel {

namespace {

constexpr int kSmallest = 5;

template <class T>
void ahd(const Conversion<T>& c) {
  const CfaSize size = primitiveSize(c);
  const CfaRect roi = primitiveRoi(c);
  const bool fits = size.width >= kSmallest && size.height >= kSmallest;
  if (fits && roi.width > 0 && roi.height > 0) {
    const CfaFrame<T> frame{c.pSrc, ptrdiff_t(c.sourceStride), size,
                            static_cast<int>(VST2IPPBayerOffset(c.nBayer))};
    const int shift = sizeof(T) == 1 ? 0 : static_cast<int>(scaling(c));
    if (!demosaicAhd(frame, roi, c.work, ptrdiff_t(c.layout.S), shift)) return;
  }
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

VISTREL_DEFINE_DEMOSAIC_IN(compactLayout, demosaicAhdToOutput, ahd)

}  // namespace
}  // namespace vistrel

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nRoiX, unsigned nRoiY, unsigned nRoiWidth,
                           unsigned nRoiHeight, unsigned char* pSrc, unsigned char* pDst) {
  vistrel::demosaicAhdToOutput(nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY,
                               nRoiWidth, nRoiHeight, pSrc, pDst);
}

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nLutMode, unsigned nRoiX, unsigned nRoiY,
                           unsigned nRoiWidth, unsigned nRoiHeight, unsigned short* pSrc,
                           unsigned char* pDst, unsigned nDstBits, unsigned nSrcBits) {
  vistrel::demosaicAhdToOutput(nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode, nRoiX,
                               nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
}
