#include "tests/reference/output.h"

namespace reference {

namespace {

struct Addressing {
  size_t start;     // samples into the image
  uint32_t stride;  // pixels
};

Addressing addressingOf(uint32_t nRoiWidth, uint32_t nBinning, int32_t bGuarded) {
  const uint32_t P = (nBinning + 1) * nRoiWidth;
  if (bGuarded == 0) return {0, P};
  return {(size_t{6} * P + 24) + 6, P + 4};
}

}  // namespace

#define CALL(family)                      \
  switch (nBinning) {                     \
    case 0: return family##1x1 ARGUMENTS; \
    case 1: return family##2x2 ARGUMENTS; \
    case 2: return family##3x3 ARGUMENTS; \
    case 3: return family##4x4 ARGUMENTS; \
    default: return;                      \
  }

void ConvertToOutputFormat8(const uint8_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                            uint8_t* pDst, uint32_t nFormat, uint32_t nBinning, int32_t bGuarded) {
  const Addressing a = addressingOf(nRoiWidth, nBinning, bGuarded);
#define ARGUMENTS (pImage + a.start, a.stride, 8, pDst, nRoiWidth, nRoiHeight, 8, 0)
  switch (nFormat) {
    case 2: CALL(ImageBGRBinning)
    case 3:
    case 4: CALL(ImageARGBBinning)
    case 5: CALL(ImageGrayBinning)
    default: return;
  }
#undef ARGUMENTS
}

namespace {

// Here nDstBits is that of a channel, and Sample is the output's.
#define ARGUMENTS (start, nStride, nSrcBits, pDst, nRoiWidth, nRoiHeight, nDstBits, nShiftAdjust)
template <class Source, class Sample>
void callBGR(Source start, uint32_t nStride, uint32_t nSrcBits, Sample* pDst, uint32_t nRoiWidth,
             uint32_t nRoiHeight, uint32_t nDstBits, uint32_t nShiftAdjust, uint32_t nBinning) {
  CALL(ImageBGRBinning)
}

template <class Source>
void callARGB(Source start, uint32_t nStride, uint32_t nSrcBits, uint8_t* pDst, uint32_t nRoiWidth,
              uint32_t nRoiHeight, uint32_t nDstBits, uint32_t nShiftAdjust, uint32_t nBinning) {
  CALL(ImageARGBBinning)
}

template <class Source, class Sample>
void callGray(Source start, uint32_t nStride, uint32_t nSrcBits, Sample* pDst, uint32_t nRoiWidth,
              uint32_t nRoiHeight, uint32_t nDstBits, uint32_t nShiftAdjust, uint32_t nBinning) {
  CALL(ImageGrayBinning)
}
#undef ARGUMENTS
#undef CALL

}  // namespace

void ConvertToOutputFormat16(const uint16_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                             uint32_t nSrcBits, void* pDst, uint32_t nFormat, uint32_t nLutMode,
                             const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits,
                             int32_t bGuarded) {
  const Addressing a = addressingOf(nRoiWidth, nBinning, bGuarded);
  const uint16_t* const start = pImage + a.start;
  uint8_t* const bytes = static_cast<uint8_t*>(pDst);
  uint16_t* const samples16 = static_cast<uint16_t*>(pDst);
  const uint32_t w = nRoiWidth, h = nRoiHeight;
  const uint32_t nAdjust = nLutMode <= 2 ? nLutMode : 0xFFFFFFFF;

  if (nFormat == 7)
    return callBGR(start, a.stride, nSrcBits, samples16, w, h, nDstBits / 3, nAdjust, nBinning);
  if (nFormat == 6)
    return callGray(start, a.stride, nSrcBits, samples16, w, h, nDstBits, nAdjust, nBinning);
  if (nFormat < 2 || nFormat > 7) return;

  if (nAdjust != 0xFFFFFFFF) {
    if (nFormat == 5)
      return callGray(start, a.stride, nSrcBits, bytes, w, h, nDstBits, nAdjust, nBinning);
    if (nFormat == 2)
      return callBGR(start, a.stride, nSrcBits, bytes, w, h, nDstBits / 3, nAdjust, nBinning);
    return callARGB(start, a.stride, nSrcBits, bytes, w, h, nDstBits / 3, nAdjust, nBinning);
  }
  uint8_t table[1024];
  Create10To8BitLUT(table, nLutMode, pUserLut, static_cast<int32_t>(nSrcBits - 10));
  const CLutTransform transform = {table, start, nSrcBits - 10};
  if (nFormat == 5) return callGray(transform, a.stride, 8, bytes, w, h, 8, 0, nBinning);
  if (nFormat == 2) return callBGR(transform, a.stride, 8, bytes, w, h, 8, 0, nBinning);
  return callARGB(transform, a.stride, 8, bytes, w, h, 8, 0, nBinning);
}

}  // namespace reference
