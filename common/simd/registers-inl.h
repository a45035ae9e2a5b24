// Shuffles and multiply-adds within groups of 16 bytes, which x86 has from SSSE3 on. A register
// holds one group (128 bits) or two (256 bits). Groups are independent of each other.
#if defined(VISTREL_REGISTERS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_REGISTERS_INL_H
#undef VISTREL_REGISTERS_INL_H
#else
#define VISTREL_REGISTERS_INL_H
#endif

#include "common/simd/simd.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_SSSE3

#undef VISTREL_OP
#if VISTREL_AVX2
typedef __m256i Register;
constexpr int kGroups = 2;
#define VISTREL_OP(name) _mm256_##name
VISTREL_INLINE Register allGroups(const void* p) {  // the same 16 bytes in every group
  return _mm256_broadcastsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(p)));
}
VISTREL_INLINE Register loadGroups(const void* p, size_t step) {  // 16 bytes each, step bytes apart
  const __m128i* second = reinterpret_cast<const __m128i*>(static_cast<const char*>(p) + step);
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(p))),
      _mm_loadu_si128(second), 1);
}
VISTREL_INLINE __m128i group(Register v, int i) {
  return i == 0 ? _mm256_castsi256_si128(v) : _mm256_extracti128_si256(v, 1);
}
template <int lanes>
VISTREL_INLINE Register blend16(Register a, Register b) {
  return _mm256_blend_epi16(a, b, lanes);
}
VISTREL_INLINE Register loadRegister(const void* p) {
  return _mm256_loadu_si256(static_cast<const Register*>(p));
}
VISTREL_INLINE void storeRegister(void* p, Register v) {
  _mm256_storeu_si256(static_cast<Register*>(p), v);
}
// Restores the order of groups after the lanes of two registers have been narrowed to fit one.
VISTREL_INLINE Register inOrder(Register v) { return _mm256_permute4x64_epi64(v, 0xD8); }
#else
typedef __m128i Register;
constexpr int kGroups = 1;
#define VISTREL_OP(name) _mm_##name
VISTREL_INLINE Register allGroups(const void* p) {
  return _mm_loadu_si128(static_cast<const __m128i*>(p));
}
VISTREL_INLINE Register loadGroups(const void* p, size_t) { return allGroups(p); }
VISTREL_INLINE __m128i group(Register v, int) { return v; }
template <int lanes>
VISTREL_INLINE Register blend16(Register a, Register b) {
#if VISTREL_SSE41
  return _mm_blend_epi16(a, b, lanes);
#else
  constexpr auto bit = [](int w) { return static_cast<short>(-(lanes >> w & 1)); };
  const __m128i m = _mm_setr_epi16(bit(0), bit(1), bit(2), bit(3), bit(4), bit(5), bit(6), bit(7));
  return _mm_or_si128(_mm_andnot_si128(m, a), _mm_and_si128(m, b));
#endif
}
VISTREL_INLINE Register loadRegister(const void* p) { return allGroups(p); }
VISTREL_INLINE void storeRegister(void* p, Register v) {
  _mm_storeu_si128(static_cast<Register*>(p), v);
}
VISTREL_INLINE Register inOrder(Register v) { return v; }
#endif

constexpr size_t kRegisterBytes = sizeof(Register);

VISTREL_INLINE Register permute(Register v, const uint8_t* order) {
  return VISTREL_OP(shuffle_epi8)(v, allGroups(order));
}
VISTREL_INLINE Register set1_16(int v) { return VISTREL_OP(set1_epi16)(static_cast<short>(v)); }
VISTREL_INLINE Register add16(Register a, Register b) { return VISTREL_OP(add_epi16)(a, b); }
VISTREL_INLINE Register add32(Register a, Register b) { return VISTREL_OP(add_epi32)(a, b); }

// The minimum of unsigned 16-bit values.
VISTREL_INLINE Register min16(Register a, Register b) {
  return VISTREL_OP(sub_epi16)(a, VISTREL_OP(subs_epu16)(a, b));
}
// Counts above 15 give zero.
VISTREL_INLINE Register shiftRight16(Register v, __m128i count) {
  return VISTREL_OP(srl_epi16)(v, count);
}
// Sums of neighbouring bytes as 16-bit values; of neighbouring 16-bit values below 32768 as 32-bit
// values.
VISTREL_INLINE Register pairSums8(Register v) {
  return VISTREL_OP(maddubs_epi16)(v, VISTREL_OP(set1_epi8)(1));
}
VISTREL_INLINE Register pairSums16(Register v) { return VISTREL_OP(madd_epi16)(v, set1_16(1)); }
// Signed 16-bit values to bytes, signed 32-bit values to 16 bits, saturated, group by group.
VISTREL_INLINE Register pack16(Register a, Register b) { return VISTREL_OP(packus_epi16)(a, b); }
VISTREL_INLINE Register pack32(Register a, Register b) { return VISTREL_OP(packs_epi32)(a, b); }

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
