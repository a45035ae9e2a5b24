#include "cfa/near/near.h"
#include "cfa/variants.h"

namespace vistrel::core {

template <class T, uint32_t variant>
int32_t ippiCFAToRGB(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
                     int32_t dstStep, int32_t grid, int32_t) {
  if (!pSrc || !pDst) return CFA_NULL_POINTER;
  if (srcSize.width < 2 || srcSize.height < 2) return CFA_BAD_SIZE;
  if (grid < CFA_GRID_BGGR || grid > CFA_GRID_GRBG) return CFA_BAD_GRID;
  const CfaRect roi = clipped(srcRoi, srcSize);
  if (roi.width < 1 || roi.height < 1) return CFA_OK;
  PlainRows<T> source(pSrc, srcStep >> (sizeof(T) - 1), srcSize.height);
  PlainImage<T> image(pDst, dstStep >> (sizeof(T) - 1));
  makeNear<T>({source, srcSize, Mosaic::ofGrid(grid)}, roi, image, levelOfIndex(variant));
  return CFA_OK;
}

VISTREL_INSTANTIATE_VARIANTS(ippiCFAToRGB, uint8_t);
VISTREL_INSTANTIATE_VARIANTS(ippiCFAToRGB, uint16_t);

}  // namespace vistrel::core

int32_t ippiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep,
                              uint8_t* pDst, int32_t dstStep, int32_t grid, int32_t interpolation) {
  return vistrel::core::ippiCFAToRGB_8u_C1C3R_arraddr[ippJumpIndexForMergedLibs](
      pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid, interpolation);
}

int32_t ippiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                               int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t grid,
                               int32_t interpolation) {
  return vistrel::core::ippiCFAToRGB_16u_C1C3R_arraddr[ippJumpIndexForMergedLibs](
      pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid, interpolation);
}
