#include "output/mono.h"

#include "output/members.h"

namespace vistrel::core {

VISTREL_MEMBER(ImageBinning1x1, Pack::mono, 1, nStride)
VISTREL_MEMBER(ImageBinning2x2, Pack::mono, 2, nStride)
VISTREL_MEMBER(ImageBinning3x3, Pack::mono, 3, nStride)
VISTREL_MEMBER(ImageBinning4x4, Pack::mono, 4, nStride)
VISTREL_INSTANCES(ImageBinning1x1)
VISTREL_INSTANCES(ImageBinning2x2)
VISTREL_INSTANCES(ImageBinning3x3)
VISTREL_INSTANCES(ImageBinning4x4)

namespace {

// The product is formed in 32 bits.
template <class T>
const T* regionStart(const T* pSrc, uint32_t nImgWidth, uint32_t nRoiX, uint32_t nRoiY,
                     uint32_t nBinning) {
  return pSrc + (nBinning + 1) * (nRoiY * nImgWidth + nRoiX);
}

template <class Source, class Sample>
void binMono(uint32_t nBinning, Source source, uint32_t nStride, uint32_t nSrcBits, Sample* pDst,
             uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust) {
  if (nBinning < kMaxBinning)
    binImage(Pack::mono, nBinning + 1, source, nStride, nSrcBits, pDst, nWidth, nHeight, nDstBits,
             nShiftAdjust);
}

}  // namespace

void Image8BitGrayScale(const uint8_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t, uint8_t* pDst,
                        uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                        uint32_t nBinning) {
  const uint8_t* p = regionStart(pSrc, nImgWidth, nRoiX, nRoiY, nBinning);
  binMono(nBinning, p, nImgWidth, 8, pDst, nRoiWidth, nRoiHeight, 8, 0);
}

void Image8BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t nSrcBits,
                        uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                        uint32_t nRoiHeight, uint32_t nBinning, uint32_t nLutMode,
                        const uint16_t* pUserLut) {
  const uint16_t* p = regionStart(pSrc, nImgWidth, nRoiX, nRoiY, nBinning);
  if (isWindow(nLutMode))
    return binMono(nBinning, p, nImgWidth, nSrcBits, pDst, nRoiWidth, nRoiHeight, 8, nLutMode);
  uint8_t table[kTableEntries];
  Create10To8BitLUT(table, nLutMode, pUserLut, static_cast<int32_t>(nSrcBits - 10));
  binMono(nBinning, CLutTransform{table, p, nSrcBits - 10}, nImgWidth, 8, pDst, nRoiWidth,
          nRoiHeight, 8, 0);
}

void Image16BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t nSrcBits,
                         uint16_t* pDst, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                         uint32_t nRoiHeight, uint32_t nDstBits, uint32_t nBinning,
                         uint32_t nLutMode) {
  // quirk: nine-bit-window. Only a result of 9 bits has a window to move, by one place.
  const uint32_t nShiftAdjust = nDstBits == 9 && nLutMode != 0;
  const uint16_t* p = regionStart(pSrc, nImgWidth, nRoiX, nRoiY, nBinning);
  binMono(nBinning, p, nImgWidth, nSrcBits, pDst, nRoiWidth, nRoiHeight, nDstBits, nShiftAdjust);
}

}  // namespace vistrel::core
