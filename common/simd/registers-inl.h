// Shuffles and multiply-adds within groups of 16 bytes, which x86 has from SSSE3 on, and 64-bit ARM
// has with NEON, and WebAssembly with its vectors. A register holds one group (128 bits) or two
// (256 bits). Groups are independent of each other.
#if defined(VISTREL_REGISTERS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_REGISTERS_INL_H
#undef VISTREL_REGISTERS_INL_H
#else
#define VISTREL_REGISTERS_INL_H
#endif

#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_SSSE3

#undef VISTREL_OP
typedef __m128i Group, ShiftCount;
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
VISTREL_INLINE Group group(Register v, int i) {
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
VISTREL_INLINE Group group(Register v, int) { return v; }
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

VISTREL_INLINE Register permute(Register v, const uint8_t* order) {
  return VISTREL_OP(shuffle_epi8)(v, allGroups(order));
}
VISTREL_INLINE Register set1_16(int v) { return VISTREL_OP(set1_epi16)(static_cast<short>(v)); }
VISTREL_INLINE Register set1_32(int v) { return VISTREL_OP(set1_epi32)(v); }
VISTREL_INLINE Register add16(Register a, Register b) { return VISTREL_OP(add_epi16)(a, b); }
VISTREL_INLINE Register add32(Register a, Register b) { return VISTREL_OP(add_epi32)(a, b); }

// The minimum of unsigned 16-bit values.
VISTREL_INLINE Register min16(Register a, Register b) {
  return VISTREL_OP(sub_epi16)(a, VISTREL_OP(subs_epu16)(a, b));
}
// Counts above 15 give zero.
VISTREL_INLINE ShiftCount shiftCount(uint32_t n) { return _mm_cvtsi32_si128(static_cast<int>(n)); }
VISTREL_INLINE Register shiftRight16(Register v, ShiftCount count) {
  return VISTREL_OP(srl_epi16)(v, count);
}
template <int count>
VISTREL_INLINE Register shiftRight16(Register v) {
  return VISTREL_OP(srli_epi16)(v, count);
}
template <int count>
VISTREL_INLINE Register shiftRight32(Register v) {
  return VISTREL_OP(srli_epi32)(v, count);
}
// Of 32-bit values below 2^16.
VISTREL_INLINE Register thirds32(Register v) {
  return shiftRight16<1>(VISTREL_OP(mulhi_epu16)(v, set1_16(0xAAAB)));
}
// Sums of neighbouring bytes as 16-bit values; of neighbouring 16-bit values below 32768 as 32-bit
// values.
VISTREL_INLINE Register pairSums8(Register v) {
  return VISTREL_OP(maddubs_epi16)(v, VISTREL_OP(set1_epi8)(1));
}
VISTREL_INLINE Register pairSums16(Register v) { return VISTREL_OP(madd_epi16)(v, set1_16(1)); }
// Sums of the products of neighbouring signed 16-bit values.
VISTREL_INLINE Register pairProducts16(Register a, Register b) {
  return VISTREL_OP(madd_epi16)(a, b);
}
// Signed 16-bit values to bytes, signed 32-bit values to 16 bits, saturated, group by group.
VISTREL_INLINE Register pack16(Register a, Register b) { return VISTREL_OP(packus_epi16)(a, b); }
VISTREL_INLINE Register pack32(Register a, Register b) { return VISTREL_OP(packs_epi32)(a, b); }
VISTREL_INLINE bool isZero(Register lanes) {  // lanes of all ones or zeros
  return VISTREL_OP(movemask_epi8)(lanes) == 0;
}

#elif VISTREL_NEON

typedef uint8x16_t Register, Group;
typedef int16x8_t ShiftCount;
constexpr int kGroups = 1;

VISTREL_INLINE uint16x8_t as16(Register v) { return vreinterpretq_u16_u8(v); }
VISTREL_INLINE int16x8_t asSigned16(Register v) { return vreinterpretq_s16_u8(v); }
VISTREL_INLINE uint32x4_t as32(Register v) { return vreinterpretq_u32_u8(v); }
VISTREL_INLINE int32x4_t asSigned32(Register v) { return vreinterpretq_s32_u8(v); }
VISTREL_INLINE Register from16(uint16x8_t v) { return vreinterpretq_u8_u16(v); }
VISTREL_INLINE Register from32(uint32x4_t v) { return vreinterpretq_u8_u32(v); }

VISTREL_INLINE Register loadRegister(const void* p) {
  return vld1q_u8(static_cast<const uint8_t*>(p));
}
VISTREL_INLINE Register loadGroups(const void* p, size_t) { return loadRegister(p); }
VISTREL_INLINE void storeRegister(void* p, Register v) { vst1q_u8(static_cast<uint8_t*>(p), v); }
VISTREL_INLINE Register allGroups(const void* p) { return loadRegister(p); }
VISTREL_INLINE Group group(Register v, int) { return v; }
VISTREL_INLINE Register inOrder(Register v) { return v; }

VISTREL_INLINE Register permute(Register v, const uint8_t* order) {
  return vqtbl1q_u8(v, vld1q_u8(order));
}
VISTREL_INLINE Register set1_16(int v) { return from16(vdupq_n_u16(static_cast<uint16_t>(v))); }
VISTREL_INLINE Register set1_32(int v) { return from32(vdupq_n_u32(static_cast<uint32_t>(v))); }
VISTREL_INLINE Register add16(Register a, Register b) {
  return from16(vaddq_u16(as16(a), as16(b)));
}
VISTREL_INLINE Register add32(Register a, Register b) {
  return from32(vaddq_u32(as32(a), as32(b)));
}
VISTREL_INLINE Register min16(Register a, Register b) {
  return from16(vminq_u16(as16(a), as16(b)));
}

VISTREL_INLINE ShiftCount shiftCount(uint32_t n) {
  return vdupq_n_s16(static_cast<int16_t>(-static_cast<int>(n)));
}
VISTREL_INLINE Register shiftRight16(Register v, ShiftCount count) {
  return from16(vshlq_u16(as16(v), count));
}
template <int count>
VISTREL_INLINE Register shiftRight16(Register v) {
  return from16(vshrq_n_u16(as16(v), count));
}
template <int count>
VISTREL_INLINE Register shiftRight32(Register v) {
  return from32(vshrq_n_u32(as32(v), count));
}
VISTREL_INLINE Register thirds32(Register v) {
  return from32(vshrq_n_u32(vmulq_n_u32(as32(v), 0xAAAB), 17));
}

VISTREL_INLINE Register pairSums8(Register v) { return from16(vpaddlq_u8(v)); }
VISTREL_INLINE Register pairSums16(Register v) { return from32(vpaddlq_u16(as16(v))); }
VISTREL_INLINE Register pairProducts16(Register a, Register b) {
  const int16x8_t x = asSigned16(a), y = asSigned16(b);
  const int32x4_t low = vmull_s16(vget_low_s16(x), vget_low_s16(y));
  return vreinterpretq_u8_s32(vpaddq_s32(low, vmull_high_s16(x, y)));
}
VISTREL_INLINE Register pack16(Register a, Register b) {
  return vqmovun_high_s16(vqmovun_s16(asSigned16(a)), asSigned16(b));
}
VISTREL_INLINE Register pack32(Register a, Register b) {
  const int16x4_t low = vqmovn_s32(asSigned32(a));
  return vreinterpretq_u8_s16(vqmovn_high_s32(low, asSigned32(b)));
}
VISTREL_INLINE bool isZero(Register lanes) { return vmaxvq_u32(as32(lanes)) == 0; }

#elif VISTREL_WASM

// No type of values has these lanes. v128_t would be Vec<int32_t>, which has functions of its own.
typedef long long Register __attribute__((vector_size(16)));
typedef Register Group;
struct ShiftCount {
  uint32_t count;
  Register kept;  // all ones, or zero for counts above 15
};
constexpr int kGroups = 1;

VISTREL_INLINE Register loadRegister(const void* p) { return wasm_v128_load(p); }
VISTREL_INLINE Register loadGroups(const void* p, size_t) { return loadRegister(p); }
VISTREL_INLINE void storeRegister(void* p, Register v) { wasm_v128_store(p, v); }
VISTREL_INLINE Register allGroups(const void* p) { return loadRegister(p); }
VISTREL_INLINE Group group(Register v, int) { return v; }
VISTREL_INLINE Register inOrder(Register v) { return v; }

VISTREL_INLINE Register permute(Register v, const uint8_t* order) {
  return wasm_i8x16_swizzle(v, loadRegister(order));
}
template <int lanes>
VISTREL_INLINE Register blend16(Register a, Register b) {
  constexpr auto from = [](int w) { return w + 8 * (lanes >> w & 1); };
  return wasm_i16x8_shuffle(a, b, from(0), from(1), from(2), from(3), from(4), from(5), from(6),
                            from(7));
}
VISTREL_INLINE Register set1_16(int v) { return wasm_i16x8_splat(static_cast<int16_t>(v)); }
VISTREL_INLINE Register set1_32(int v) { return wasm_i32x4_splat(v); }
VISTREL_INLINE Register add16(Register a, Register b) { return wasm_i16x8_add(a, b); }
VISTREL_INLINE Register add32(Register a, Register b) { return wasm_i32x4_add(a, b); }
VISTREL_INLINE Register min16(Register a, Register b) { return wasm_u16x8_min(a, b); }

VISTREL_INLINE ShiftCount shiftCount(uint32_t n) { return {n, wasm_i32x4_splat(n < 16 ? -1 : 0)}; }
VISTREL_INLINE Register shiftRight16(Register v, ShiftCount by) {
  return wasm_v128_and(wasm_u16x8_shr(v, madeHere(by.count)), by.kept);
}
template <int count>
VISTREL_INLINE Register shiftRight16(Register v) {
  return wasm_u16x8_shr(v, count);
}
template <int count>
VISTREL_INLINE Register shiftRight32(Register v) {
  return wasm_u32x4_shr(v, count);
}
VISTREL_INLINE Register thirds32(Register v) {
  return wasm_u32x4_shr(wasm_i32x4_mul(v, set1_32(0xAAAB)), 17);
}

VISTREL_INLINE Register pairSums8(Register v) { return wasm_u16x8_extadd_pairwise_u8x16(v); }
VISTREL_INLINE Register pairSums16(Register v) { return wasm_i32x4_dot_i16x8(v, set1_16(1)); }
VISTREL_INLINE Register pairProducts16(Register a, Register b) {
  return wasm_i32x4_dot_i16x8(a, b);
}
VISTREL_INLINE Register pack16(Register a, Register b) { return wasm_u8x16_narrow_i16x8(a, b); }
VISTREL_INLINE Register pack32(Register a, Register b) { return wasm_i16x8_narrow_i32x4(a, b); }
VISTREL_INLINE bool isZero(Register lanes) { return !wasm_v128_any_true(lanes); }

// What the other headers use of x86's operations.
#undef VISTREL_OP
#define VISTREL_OP(name) group_##name
VISTREL_INLINE Register group_set1_epi32(int v) { return set1_32(v); }
VISTREL_INLINE Register group_shuffle_epi8(Register v, Register order) {
  return wasm_i8x16_swizzle(v, order);
}
VISTREL_INLINE Register group_blendv_epi8(Register a, Register b, Register mask) {
  return wasm_v128_bitselect(b, a, mask);
}
VISTREL_INLINE Register group_subs_epu16(Register a, Register b) {
  return wasm_u16x8_sub_sat(a, b);
}
VISTREL_INLINE Register group_packus_epi16(Register a, Register b) { return pack16(a, b); }
VISTREL_INLINE Register group_packs_epi32(Register a, Register b) { return pack32(a, b); }
VISTREL_INLINE Register group_madd_epi16(Register a, Register b) { return pairProducts16(a, b); }
VISTREL_INLINE Register group_maddubs_epi16(Register a, Register b) {  // sums must not overflow
  const Register bytes = wasm_v128_and(a, set1_16(255)), low = wasm_i16x8_shl(b, 8);
  return add16(wasm_i16x8_mul(bytes, wasm_i16x8_shr(low, 8)),
               wasm_i16x8_mul(shiftRight16<8>(a), wasm_i16x8_shr(b, 8)));
}
VISTREL_INLINE Register group_unpacklo_epi8(Register a, Register b) {
  return wasm_i8x16_shuffle(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
}
VISTREL_INLINE Register group_unpackhi_epi8(Register a, Register b) {
  return wasm_i8x16_shuffle(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
}
VISTREL_INLINE Register group_unpacklo_epi16(Register a, Register b) {
  return wasm_i16x8_shuffle(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
}
VISTREL_INLINE Register group_unpackhi_epi16(Register a, Register b) {
  return wasm_i16x8_shuffle(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
}
VISTREL_INLINE Register group_unpacklo_epi32(Register a, Register b) {
  return wasm_i32x4_shuffle(a, b, 0, 4, 1, 5);
}
VISTREL_INLINE Register group_unpackhi_epi32(Register a, Register b) {
  return wasm_i32x4_shuffle(a, b, 2, 6, 3, 7);
}

#endif

#if VISTREL_PERMUTES
constexpr size_t kRegisterBytes = sizeof(Register);
#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
