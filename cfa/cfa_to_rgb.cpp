#include "cfa/cfa.h"
#include "cfa/near_rows.h"

namespace vistrel {

namespace {

template <class T>
int32_t cfaToRgb(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
                 int32_t dstStep, int32_t grid) {
  if (!pSrc || !pDst) return CFA_NULL_POINTER;
  if (srcSize.width < 2 || srcSize.height < 2) return CFA_BAD_SIZE;
  if (grid < CFA_GRID_BGGR || grid > CFA_GRID_GRBG) return CFA_BAD_GRID;
  const CfaRect roi = clipped(srcRoi, srcSize);
  if (roi.width < 1 || roi.height < 1) return CFA_OK;
  NearRows<T> rows({pSrc, srcStep >> (sizeof(T) - 1), srcSize, grid}, roi);
  if (!rows) return CFA_OK;
  RowCopies<T> none;
  for (int y = 0; y < roi.height; ++y)
    rows.row(y, pDst + y * ptrdiff_t{dstStep >> (sizeof(T) - 1)}, none);
  return CFA_OK;
}

}  // namespace
}  // namespace vistrel

int32_t ippiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep,
                              uint8_t* pDst, int32_t dstStep, int32_t grid, int32_t) {
  return vistrel::cfaToRgb(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}

int32_t ippiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                               int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t grid,
                               int32_t) {
  return vistrel::cfaToRgb(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}
