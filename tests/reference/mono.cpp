#include "tests/reference/binning.h"
#include "tests/reference/output.h"

namespace reference {

namespace {

template <unsigned N, class Source, class Sample>
void monoBinning(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,
                 uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) {
  const uint32_t s = sampleShift(nSrcBits, nDstBits, nShiftAdjust);
  const uint32_t C = ceilingOf<Sample>(nDstBits);
  for (size_t y = 0; y < nHeight; ++y) {
    for (size_t x = 0; x < nWidth; ++x) {
      uint32_t sum = 0;
      for (size_t i = 0; i < N; ++i)
        for (size_t j = 0; j < N; ++j) sum += shr(source[(N * y + i) * nStride + N * x + j], s);
      const uint32_t v = reduce<N>(sum);
      destination[y * nWidth + x] = static_cast<Sample>(v < C ? v : C);
    }
  }
}

template <class Source, class Sample>
void chooseMember(uint32_t nBinning, Source source, uint32_t nStride, uint32_t nSrcBits,
                  Sample* pDst, uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits,
                  uint32_t nShiftAdjust) {
  switch (nBinning) {
#define MEMBER(N) \
  ImageBinning##N(source, nStride, nSrcBits, pDst, nWidth, nHeight, nDstBits, nShiftAdjust)
    case 0: return MEMBER(1x1);
    case 1: return MEMBER(2x2);
    case 2: return MEMBER(3x3);
    case 3: return MEMBER(4x4);
    default: return;
#undef MEMBER
  }
}

uint32_t originOf(uint32_t nBinning, uint32_t nRoiX, uint32_t nRoiY, uint32_t nImgWidth) {
  return (nBinning + 1) * (nRoiY * nImgWidth + nRoiX);
}

}  // namespace

#define MEMBER(N, name)                                                                    \
  template <class Source, class Sample>                                                    \
  void name(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,       \
            uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) { \
    monoBinning<N>(source, nStride, nSrcBits, destination, nWidth, nHeight, nDstBits,      \
                   nShiftAdjust);                                                          \
  }
MEMBER(1, ImageBinning1x1)
MEMBER(2, ImageBinning2x2)
MEMBER(3, ImageBinning3x3)
MEMBER(4, ImageBinning4x4)
#undef MEMBER

REFERENCE_INSTANTIATE(ImageBinning, const uint16_t*, uint8_t)
REFERENCE_INSTANTIATE(ImageBinning, CLutTransform, uint8_t)
REFERENCE_INSTANTIATE(ImageBinning, const uint8_t*, uint8_t)
REFERENCE_INSTANTIATE(ImageBinning, const uint16_t*, uint16_t)

void Image8BitGrayScale(const uint8_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t, uint8_t* pDst,
                        uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                        uint32_t nBinning) {
  const uint8_t* const p = pSrc + originOf(nBinning, nRoiX, nRoiY, nImgWidth);
  chooseMember(nBinning, p, nImgWidth, 8, pDst, nRoiWidth, nRoiHeight, 8, 0);
}

void Image8BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t nSrcBits,
                        uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                        uint32_t nRoiHeight, uint32_t nBinning, uint32_t nLutMode,
                        const uint16_t* pUserLut) {
  const uint16_t* const p = pSrc + originOf(nBinning, nRoiX, nRoiY, nImgWidth);
  if (nLutMode <= 2) {
    chooseMember(nBinning, p, nImgWidth, nSrcBits, pDst, nRoiWidth, nRoiHeight, 8, nLutMode);
    return;
  }
  uint8_t table[1024];
  Create10To8BitLUT(table, nLutMode, pUserLut, static_cast<int32_t>(nSrcBits - 10));
  const CLutTransform transform = {table, p, nSrcBits - 10};
  chooseMember(nBinning, transform, nImgWidth, 8, pDst, nRoiWidth, nRoiHeight, 8, 0);
}

void Image16BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t nSrcBits,
                         uint16_t* pDst, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                         uint32_t nRoiHeight, uint32_t nDstBits, uint32_t nBinning,
                         uint32_t nLutMode) {
  const uint16_t* const p = pSrc + originOf(nBinning, nRoiX, nRoiY, nImgWidth);
  const uint32_t nShiftAdjust = nDstBits == 9 && nLutMode != 0 ? 1 : 0;
  chooseMember(nBinning, p, nImgWidth, nSrcBits, pDst, nRoiWidth, nRoiHeight, nDstBits,
               nShiftAdjust);
}

}  // namespace reference
