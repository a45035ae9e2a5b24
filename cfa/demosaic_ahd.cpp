#include "cfa/ahd/ahd.h"
#include "cfa/variants.h"

namespace vistrel::core {

namespace {

constexpr int kSmallestSide = 5;

}  // namespace

template <class T, uint32_t variant>
int32_t ownAHD(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
               int32_t dstStep, int32_t grid, T*, int32_t) {
  if (grid < CFA_GRID_BGGR || grid > CFA_GRID_GRBG) return CFA_BAD_GRID;
  // quirk: origin-moves-region. A negative origin moves to 0, and the sides keep their length.
  srcRoi.x = std::max(srcRoi.x, 0);
  srcRoi.y = std::max(srcRoi.y, 0);
  const CfaRect roi = clipped(srcRoi, srcSize);
  if (roi.width < 1 || roi.height < 1) return CFA_OK;
  PlainRows<T> source(pSrc, srcStep >> (sizeof(T) - 1), srcSize.height);
  PlainImage<T> image(pDst, dstStep / int32_t{sizeof(T)});
  withArena([&](Arena& arena) {
    AhdRegion<T> region({source, srcSize, Mosaic::ofGrid(grid)}, roi,
                        {.level = levelOfIndex(variant)}, arena);
    if (!arena.counts()) region.sweep(image, rowsOf(roi)).finish();
  });
  return CFA_OK;
}

template <class T, uint32_t variant>
int32_t ippiDemosaicAHD(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
                        int32_t dstStep, int32_t grid, T* pTmp, int32_t tmpStep) {
  if (!pSrc || !pDst) return CFA_NULL_POINTER;
  if (srcSize.width < kSmallestSide || srcSize.height < kSmallestSide) return CFA_BAD_SIZE;
  return ownAHD<T, variant>(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid, pTmp, tmpStep);
}

VISTREL_INSTANTIATE_VARIANTS(ownAHD, uint8_t);
VISTREL_INSTANTIATE_VARIANTS(ownAHD, uint16_t);
VISTREL_INSTANTIATE_VARIANTS(ippiDemosaicAHD, uint8_t);
VISTREL_INSTANTIATE_VARIANTS(ippiDemosaicAHD, uint16_t);

}  // namespace vistrel::core

int32_t ippiDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                 int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t grid,
                                 uint8_t* pTmp, int32_t tmpStep) {
  return vistrel::core::ippiDemosaicAHD_8u_C1C3R_arraddr[ippJumpIndexForMergedLibs](
      pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid, pTmp, tmpStep);
}

int32_t ippiDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                  int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t grid,
                                  uint16_t* pTmp, int32_t tmpStep) {
  return vistrel::core::ippiDemosaicAHD_16u_C1C3R_arraddr[ippJumpIndexForMergedLibs](
      pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid, pTmp, tmpStep);
}
