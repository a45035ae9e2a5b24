#include "common/work_layout.h"
#include "output/binning.h"

namespace vistrel::core {

VISTREL_BINNING_MEMBER(ImageBGRBinning1x1) {
  binImage(Pack::bgr, 1, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageBGRBinning2x2) {
  binImage(Pack::bgr, 2, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageBGRBinning3x3) {
  binImage(Pack::bgr, 3, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageBGRBinning4x4) {
  binImage(Pack::bgr, 4, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_INSTANCES(ImageBGRBinning1x1)
VISTREL_INSTANCES(ImageBGRBinning2x2)
VISTREL_INSTANCES(ImageBGRBinning3x3)
VISTREL_INSTANCES(ImageBGRBinning4x4)

VISTREL_BINNING_MEMBER(ImageARGBBinning1x1) {
  binImage(Pack::argb, 1, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageARGBBinning2x2) {
  binImage(Pack::argb, 2, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageARGBBinning3x3) {
  binImage(Pack::argb, 3, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageARGBBinning4x4) {
  binImage(Pack::argb, 4, source, size_t{kChannels} * nStride, nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_INSTANCES_TO_8(ImageARGBBinning1x1)
VISTREL_INSTANCES_TO_8(ImageARGBBinning2x2)
VISTREL_INSTANCES_TO_8(ImageARGBBinning3x3)
VISTREL_INSTANCES_TO_8(ImageARGBBinning4x4)

VISTREL_BINNING_MEMBER(ImageGrayBinning1x1) {
  binImage(Pack::gray, 1, source, grayStride(1, nStride, nWidth), nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageGrayBinning2x2) {
  binImage(Pack::gray, 2, source, grayStride(2, nStride, nWidth), nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageGrayBinning3x3) {
  binImage(Pack::gray, 3, source, grayStride(3, nStride, nWidth), nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageGrayBinning4x4) {
  binImage(Pack::gray, 4, source, grayStride(4, nStride, nWidth), nSrcBits, destination, nWidth,
           nHeight, nDstBits, nShiftAdjust);
}
VISTREL_INSTANCES(ImageGrayBinning1x1)
VISTREL_INSTANCES(ImageGrayBinning2x2)
VISTREL_INSTANCES(ImageGrayBinning3x3)
VISTREL_INSTANCES(ImageGrayBinning4x4)

}  // namespace vistrel::core
