#include "cfa/ahd.h"
#include "cfa/cfa.h"

namespace vistrel {

namespace {

constexpr int kSmallestFrame = 5;

template <class T>
int32_t ahdPrimitive(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
                     int32_t dstStep, int32_t grid) {
  if (!pSrc || !pDst) return CFA_NULL_POINTER;
  if (srcSize.width < kSmallestFrame || srcSize.height < kSmallestFrame) return CFA_BAD_SIZE;
  if (grid < CFA_GRID_BGGR || grid > CFA_GRID_GRBG) return CFA_BAD_GRID;
  // A negative origin moves; the sides stay as long as they were.
  srcRoi.x = std::max(srcRoi.x, 0);
  srcRoi.y = std::max(srcRoi.y, 0);
  const CfaRect roi = clipped(srcRoi, srcSize);
  if (roi.width < 1 || roi.height < 1) return CFA_OK;
  const CfaFrame<T> frame{pSrc, srcStep >> (sizeof(T) - 1), srcSize, grid};
  AhdRegion<T> rows(frame, roi);
  if (!rows) return CFA_OK;
  RowCopies<T> none;
  for (int y = 0; y < roi.height; ++y)
    rows.row(y, pDst + y * ptrdiff_t{dstStep / int32_t{sizeof(T)}}, none);
  return CFA_OK;
}

}  // namespace
}  // namespace vistrel

int32_t ippiDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                 int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t grid,
                                 uint8_t*, int32_t) {
  return vistrel::ahdPrimitive(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}

int32_t ippiDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                  int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t grid,
                                  uint16_t*, int32_t) {
  return vistrel::ahdPrimitive(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}
