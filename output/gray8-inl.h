// Luma of bytes, a register of pixels at a time. 1000 times the exact luma is an integer. The
// rounding of the sum in double precision matters only if 1000 divides it, so that sum is computed
// only there.
#if defined(VISTREL_GRAY8_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_GRAY8_INL_H
#undef VISTREL_GRAY8_INL_H
#else
#define VISTREL_GRAY8_INL_H
#endif

#include "output/blocks8-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_PERMUTES

// 16-bit pairs (green, red) and (blue, 0) of four pixels of three bytes.
alignas(16) constexpr uint8_t kGreenRed[16] = {1, 0x80, 2, 0x80, 4,  0x80, 5,  0x80,
                                               7, 0x80, 8, 0x80, 10, 0x80, 11, 0x80};
alignas(16) constexpr uint8_t kBlueOnly[16] = {0, 0x80, 0x80, 0x80, 3, 0x80, 0x80, 0x80,
                                               6, 0x80, 0x80, 0x80, 9, 0x80, 0x80, 0x80};

typedef int32_t Integers __attribute__((vector_size(sizeof(Register))));
typedef float Floats __attribute__((vector_size(sizeof(Register))));

struct FourLumas {  // in each group
  Register luma;    // 32 bits each
  Register exact;   // all ones where 1000 divides the sum
};

VISTREL_INLINE FourLumas lumas(const uint8_t* bgr) {
  const Register v = loadGroups(bgr, 12);
  const Register thousandfold =
      add32(pairProducts16(permute(v, kGreenRed), set1_32(299 << 16 | 587)),
            pairProducts16(permute(v, kBlueOnly), set1_32(114)));
  // Within 0.0001 of the quotient, whose fraction is 0 or at least 0.001.
  const auto quotient = __builtin_convertvector((Integers)thousandfold, Floats) * 0.001f + 0.0005f;
  const auto luma = (Register) __builtin_convertvector(quotient, Integers);
  const Register back = pairProducts16(luma, set1_32(1000));
  return {luma, (Register)((Integers)back == (Integers)thousandfold)};
}

// Computes pixels from the start of the row, as many as it can without reading a byte beyond it.
// Returns their number.
VISTREL_INLINE size_t grayBytes(const uint8_t* bgr, uint8_t* d, size_t width) {
  constexpr size_t step = 4 * kGroups;
  size_t x = 0;
  for (; 3 * x + 12 * (kGroups - 1) + 16 <= 3 * width; x += step) {
    const FourLumas four = lumas(bgr + 3 * x);
    const Register lumas16 = pack32(four.luma, four.luma);
    const Register bytes = pack16(lumas16, lumas16);
    for (int g = 0; g < kGroups; ++g) storeOutputs<4>(d + x + 4 * g, group(bytes, g));
    if (isZero(four.exact)) continue;
    for (size_t i = x; i < x + step; ++i)
      d[i] = static_cast<uint8_t>(luma(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2]));
  }
  return x;
}

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
