#include "output/mono.h"

#include "output/row_writer.h"
#include "output/table.h"

namespace vistrel::core {

namespace {

// The offset is computed in 32 bits.
template <class T>
const T* regionStart(const T* pSrc, uint32_t nImgWidth, uint32_t nRoiX, uint32_t nRoiY,
                     uint32_t nBinning) {
  return pSrc + (nBinning + 1) * (nRoiY * nImgWidth + nRoiX);
}

// An unknown binning leaves pDst unchanged.
template <class T, class Sample>
void reduceMono(uint32_t nBinning, const T* source, uint32_t nStride, Reduction reduction,
                Sample* pDst, uint32_t nWidth, uint32_t nHeight) {
  if (nBinning >= kMaxBinning) return;
  RowWriter(Pack::mono, depthOf<T, Sample>(), nBinning + 1, nStride, nWidth, reduction)
      .rows(source, pDst, nHeight);
}

}  // namespace

void Image8BitGrayScale(const uint8_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t, uint8_t* pDst,
                        uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                        uint32_t nBinning) {
  const uint8_t* p = regionStart(pSrc, nImgWidth, nRoiX, nRoiY, nBinning);
  reduceMono(nBinning, p, nImgWidth, reductionOf<uint8_t>(8, 8, 0), pDst, nRoiWidth, nRoiHeight);
}

void Image8BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t nSrcBits,
                        uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                        uint32_t nRoiHeight, uint32_t nBinning, uint32_t nLutMode,
                        const uint16_t* pUserLut) {
  const uint16_t* p = regionStart(pSrc, nImgWidth, nRoiX, nRoiY, nBinning);
  if (isWindow(nLutMode))
    return reduceMono(nBinning, p, nImgWidth, reductionOf<uint8_t>(nSrcBits, 8, nLutMode), pDst,
                      nRoiWidth, nRoiHeight);
  if (nBinning >= kMaxBinning) return;
  uint8_t table[kTableEntries];
  Create10To8BitLUT(table, nLutMode, pUserLut, static_cast<int32_t>(nSrcBits - 10));
  RowWriter(Pack::mono, nBinning + 1, nImgWidth, nRoiWidth, table, nSrcBits - 10)
      .rows(p, pDst, nRoiHeight);
}

void Image16BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t, uint32_t nSrcBits,
                         uint16_t* pDst, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                         uint32_t nRoiHeight, uint32_t nDstBits, uint32_t nBinning,
                         uint32_t nLutMode) {
  // quirk: nine-bit-window. Only 9-bit results have a window, and it moves by one bit.
  const uint32_t nShiftAdjust = nDstBits == 9 && nLutMode != 0;
  const uint16_t* p = regionStart(pSrc, nImgWidth, nRoiX, nRoiY, nBinning);
  reduceMono(nBinning, p, nImgWidth, reductionOf<uint16_t>(nSrcBits, nDstBits, nShiftAdjust), pDst,
             nRoiWidth, nRoiHeight);
}

}  // namespace vistrel::core
