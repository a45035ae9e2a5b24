#include "tests/reference/binning.h"
#include "tests/reference/output.h"

namespace reference {

namespace {

// place(pixel, c) is the position of channel c of an output pixel.
template <unsigned N, class Source, class Sample, class Place>
void colourBinning(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,
                   uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust,
                   Place place) {
  const uint32_t s = sampleShift(nSrcBits, nDstBits, nShiftAdjust);
  const uint32_t C = ceilingOf<Sample>(nDstBits);
  const size_t rowStep = size_t{3} * nStride;
  for (size_t y = 0; y < nHeight; ++y) {
    for (size_t x = 0; x < nWidth; ++x) {
      const size_t B = y * N * rowStep + x * N * 3;
      for (unsigned c = 0; c < 3; ++c) {
        const uint32_t v = binnedChannel<N>(source, B, rowStep, c, s);
        destination[place(y * nWidth + x, c)] = static_cast<Sample>(v < C ? v : C);
      }
    }
  }
}

size_t placeBGR(size_t pixel, unsigned c) { return 3 * pixel + c; }
size_t placeARGB(size_t pixel, unsigned c) { return 4 * pixel + 3 - c; }

}  // namespace

#define MEMBER(N, name, place)                                                             \
  template <class Source, class Sample>                                                    \
  void name(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,       \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) { \
    colourBinning<N>(source, nStride, nSrcBits, destination, nWidth, nHeight, nDstBits,    \
                     nShiftAdjust, place);                                                 \
  }
MEMBER(1, ImageBGRBinning1x1, placeBGR)
MEMBER(2, ImageBGRBinning2x2, placeBGR)
MEMBER(3, ImageBGRBinning3x3, placeBGR)
MEMBER(4, ImageBGRBinning4x4, placeBGR)
MEMBER(1, ImageARGBBinning1x1, placeARGB)
MEMBER(2, ImageARGBBinning2x2, placeARGB)
MEMBER(3, ImageARGBBinning3x3, placeARGB)
MEMBER(4, ImageARGBBinning4x4, placeARGB)
#undef MEMBER

REFERENCE_INSTANTIATE(ImageBGRBinning, const uint16_t*, uint8_t)
REFERENCE_INSTANTIATE(ImageBGRBinning, CLutTransform, uint8_t)
REFERENCE_INSTANTIATE(ImageBGRBinning, const uint16_t*, uint16_t)
REFERENCE_INSTANTIATE(ImageBGRBinning, const uint8_t*, uint8_t)
REFERENCE_INSTANTIATE(ImageARGBBinning, const uint16_t*, uint8_t)
REFERENCE_INSTANTIATE(ImageARGBBinning, CLutTransform, uint8_t)
REFERENCE_INSTANTIATE(ImageARGBBinning, const uint8_t*, uint8_t)

}  // namespace reference
