// Computes the running choice: the image that each pixel of a row comes from.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#endif

namespace vistrel::core {

// One bit for each of sixteen sums.
struct SumBits {
  uint32_t negative, zero;

  explicit SumBits(const int8_t* sums) {
#if defined(__SSE2__)
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(sums));
    negative = static_cast<uint32_t>(_mm_movemask_epi8(v));
    zero = static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_setzero_si128())));
#elif defined(__aarch64__)
    const int8x16_t v = vld1q_s8(sums);
    negative = bitsOf(vcltzq_s8(v));
    zero = bitsOf(vceqzq_s8(v));
#elif defined(__wasm_simd128__)
    const v128_t v = wasm_v128_load(sums);
    negative = wasm_i8x16_bitmask(v);
    zero = wasm_i8x16_bitmask(wasm_i8x16_eq(v, wasm_i32x4_splat(0)));
#else
    negative = zero = 0;
    for (int i = 0; i < 16; ++i) {
      negative |= uint32_t{sums[i] < 0} << i;
      zero |= uint32_t{sums[i] == 0} << i;
    }
#endif
  }

#if defined(__aarch64__)
 private:
  static uint32_t bitsOf(uint8x16_t masks) {
    alignas(16) static constexpr uint8_t places[16] = {1, 2, 4, 8, 16, 32, 64, 128,
                                                       1, 2, 4, 8, 16, 32, 64, 128};
    uint8x16_t bits = vandq_u8(masks, vld1q_u8(places));
    for (int i = 0; i < 3; ++i) bits = vpaddq_u8(bits, bits);
    return vgetq_lane_u16(vreinterpretq_u16_u8(bits), 0);
  }
#endif
};

// For each value of eight bits: all ones for each bit that is set.
template <class T>
constexpr auto kMaskOfBits = [] {
  std::array<std::array<T, 8>, 256> masks{};
  for (unsigned bits = 0; bits < 256; ++bits)
    for (unsigned i = 0; i < 8; ++i) masks[bits][i] = static_cast<T>(bits >> i & 1 ? ~0 : 0);
  return masks;
}();

template <class T>
void storeMasks(T* to, uint32_t bits) {
  std::memcpy(to, kMaskOfBits<T>[bits & 0xFF].data(), 8 * sizeof(T));
  std::memcpy(to + 8, kMaskOfBits<T>[bits >> 8 & 0xFF].data(), 8 * sizeof(T));
}

// Sets a column to all ones if the nearest sum that is not zero, its own or one to its left, is
// negative.
//
// A bit stands for a pair of columns. If both sums of a pair are zero, the pair is tied and repeats
// the choice of the pair before. So a negative pair decides for all tied pairs that follow it. An
// addition finds these: a one added to the first bit of a run of ones clears the whole run.
template <class T>
void runningChoice(const int8_t* evenSums, const int8_t* oddSums, size_t n, T* even, T* odd) {
  uint32_t before = 0;  // the choice of the column before
  for (size_t k = 0; k < n; k += 16) {
    const SumBits e(evenSums + k), o(oddSums + k);
    const uint32_t negative = o.negative | (o.zero & e.negative);
    const uint32_t tied = o.zero & e.zero;
    const uint32_t begins = (negative << 1 | before) & tied;
    const uint32_t oddChoice = negative | (tied & ~(tied + begins));
    storeMasks(odd + k, oddChoice);
    storeMasks(even + k, e.negative | (e.zero & (oddChoice << 1 | before)));
    before = oddChoice >> 15 & 1;
  }
}

}  // namespace vistrel::core
