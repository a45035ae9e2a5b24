// Pixels of three bytes to pixels of four: byte 0 keeps its value, then red, green, blue.
#if defined(VISTREL_ARGB_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_ARGB_INL_H
#undef VISTREL_ARGB_INL_H
#else
#define VISTREL_ARGB_INL_H
#endif

#include "common/simd/registers-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

inline void spreadToArgb(const uint8_t* __restrict bgr, uint8_t* __restrict argb, size_t width) {
  size_t x = 0;
#if VISTREL_NEON
  for (; x + 16 <= width; x += 16) {
    const uint8x16x3_t colours = vld3q_u8(bgr + 3 * x);
    const uint8x16_t first = vld4q_u8(argb + 4 * x).val[0];
    vst4q_u8(argb + 4 * x, {{first, colours.val[2], colours.val[1], colours.val[0]}});
  }
#elif VISTREL_GROUPS
  alignas(16) static constexpr uint8_t order[16] = {0x80, 2, 1, 0, 0x80, 5,  4,  3,
                                                    0x80, 8, 7, 6, 0x80, 11, 10, 9};
  constexpr size_t step = 4 * kGroups;
  const Register alpha = VISTREL_OP(set1_epi32)(0xFF);
  for (; 3 * x + 12 * (kGroups - 1) + 16 <= 3 * width; x += step) {
    const Register colours = permute(loadGroups(bgr + 3 * x, 12), order);
    storeRegister(argb + 4 * x, colours | (loadRegister(argb + 4 * x) & alpha));
  }
#endif
  for (; x < width; ++x)
    for (int c = 0; c < 3; ++c) argb[4 * x + 3 - c] = bgr[3 * x + c];
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
