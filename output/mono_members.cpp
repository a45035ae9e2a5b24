#include "output/binning.h"

namespace vistrel::core {

VISTREL_BINNING_MEMBER(ImageBinning1x1) {
  binImage(Pack::mono, 1, source, nStride, nSrcBits, destination, nWidth, nHeight, nDstBits,
           nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageBinning2x2) {
  binImage(Pack::mono, 2, source, nStride, nSrcBits, destination, nWidth, nHeight, nDstBits,
           nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageBinning3x3) {
  binImage(Pack::mono, 3, source, nStride, nSrcBits, destination, nWidth, nHeight, nDstBits,
           nShiftAdjust);
}
VISTREL_BINNING_MEMBER(ImageBinning4x4) {
  binImage(Pack::mono, 4, source, nStride, nSrcBits, destination, nWidth, nHeight, nDstBits,
           nShiftAdjust);
}
VISTREL_INSTANCES(ImageBinning1x1)
VISTREL_INSTANCES(ImageBinning2x2)
VISTREL_INSTANCES(ImageBinning3x3)
VISTREL_INSTANCES(ImageBinning4x4)

}  // namespace vistrel::core
