// The primitives in one variant for each processor level, and the tables through which the public
// names reach them. A variant always runs at its own level, whatever ippJumpIndexForMergedLibs is.
#pragma once

#include <cstdint>

#include "vistrel/cfa.h"

namespace vistrel::core {

// Variants are numbered like ippJumpIndexForMergedLibs: 0 and 1 m7, 2 u8, 3 y8.

template <class T, uint32_t variant>
int32_t ippiCFAToRGB(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
                     int32_t dstStep, int32_t grid, int32_t interpolation);

template <class T, uint32_t variant>
int32_t ippiDemosaicAHD(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
                        int32_t dstStep, int32_t grid, T* pTmp, int32_t tmpStep);

// The same, after pointers and size have been checked.
template <class T, uint32_t variant>
int32_t ownAHD(const T* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep, T* pDst,
               int32_t dstStep, int32_t grid, T* pTmp, int32_t tmpStep);

#define VISTREL_VARIANTS(name, function, T)   \
  constexpr auto m7_##name = &function<T, 0>; \
  constexpr auto u8_##name = &function<T, 2>; \
  constexpr auto y8_##name = &function<T, 3>

#define VISTREL_JUMP_TABLE(name) \
  constexpr decltype(m7_##name) name##_arraddr[4] = {m7_##name, m7_##name, u8_##name, y8_##name}

VISTREL_VARIANTS(ippiCFAToRGB_8u_C1C3R, ippiCFAToRGB, uint8_t);
VISTREL_VARIANTS(ippiCFAToRGB_16u_C1C3R, ippiCFAToRGB, uint16_t);
VISTREL_VARIANTS(ippiDemosaicAHD_8u_C1C3R, ippiDemosaicAHD, uint8_t);
VISTREL_VARIANTS(ippiDemosaicAHD_16u_C1C3R, ippiDemosaicAHD, uint16_t);

VISTREL_JUMP_TABLE(ippiCFAToRGB_8u_C1C3R);
VISTREL_JUMP_TABLE(ippiCFAToRGB_16u_C1C3R);
VISTREL_JUMP_TABLE(ippiDemosaicAHD_8u_C1C3R);
VISTREL_JUMP_TABLE(ippiDemosaicAHD_16u_C1C3R);

#undef VISTREL_JUMP_TABLE

#define VISTREL_INSTANTIATE_VARIANTS(function, T)   \
  template decltype(function<T, 0>) function<T, 0>; \
  template decltype(function<T, 2>) function<T, 2>; \
  template decltype(function<T, 3>) function<T, 3>

}  // namespace vistrel::core
