#include "tests/reference/binning.h"
#include "tests/reference/output.h"

namespace reference {

namespace {

// Rows are rowStep samples apart, blocks N rows.
template <unsigned N, class Source, class Sample>
void grayBinning(Source source, size_t rowStep, uint32_t nSrcBits, Sample* destination,
                 uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) {
  const uint32_t s = sampleShift(nSrcBits, nDstBits, nShiftAdjust);
  const uint32_t C = ceilingOf<Sample>(nDstBits);
  for (size_t y = 0; y < nHeight; ++y) {
    for (size_t x = 0; x < nWidth; ++x) {
      const size_t B = y * N * rowStep + 3 * N * x;
      double V[3];
      for (unsigned c = 0; c < 3; ++c) V[c] = binnedChannel<N>(source, B, rowStep, c, s);
      const double L = (V[1] * 0.587 + V[2] * 0.299) + V[0] * 0.114;
      const uint32_t g = static_cast<uint32_t>(trunc32(L));
      destination[y * nWidth + x] = static_cast<Sample>(g < C ? g : C);
    }
  }
}

}  // namespace

// The 1x1 member steps by the row of a guarded image, the others by nStride samples.
template <class Source, class Sample>
void ImageGrayBinning1x1(Source source, uint32_t, uint32_t nSrcBits, Sample* destination,
                         uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits,
                         uint32_t nShiftAdjust) {
  grayBinning<1>(source, 3 * (size_t{nWidth} + 4), nSrcBits, destination, nWidth, nHeight, nDstBits,
                 nShiftAdjust);
}

#define MEMBER(N, name)                                                                    \
  template <class Source, class Sample>                                                    \
  void name(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,       \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) { \
    grayBinning<N>(source, nStride, nSrcBits, destination, nWidth, nHeight, nDstBits,      \
                   nShiftAdjust);                                                          \
  }
MEMBER(2, ImageGrayBinning2x2)
MEMBER(3, ImageGrayBinning3x3)
MEMBER(4, ImageGrayBinning4x4)
#undef MEMBER

REFERENCE_INSTANTIATE(ImageGrayBinning, const uint16_t*, uint8_t)
REFERENCE_INSTANTIATE(ImageGrayBinning, CLutTransform, uint8_t)
REFERENCE_INSTANTIATE(ImageGrayBinning, const uint16_t*, uint16_t)
REFERENCE_INSTANTIATE(ImageGrayBinning, const uint8_t*, uint8_t)

}  // namespace reference
