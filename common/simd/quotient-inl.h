// Quotients of signed values, truncated toward zero.
#if defined(VISTREL_QUOTIENT_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_QUOTIENT_INL_H
#undef VISTREL_QUOTIENT_INL_H
#else
#define VISTREL_QUOTIENT_INL_H
#endif

#include "common/arith.h"
#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// a * b / c. The product wraps in 32 bits.
VISTREL_INLINE int productOver(int a, int b, int c) { return wrapMul(a, b) / c; }

VISTREL_INLINE Vec<int32_t> productOver(Vec<int32_t> a, Vec<int32_t> b, Vec<int32_t> c) {
  const auto product = as<Vec<int32_t>>(as<Vec<uint32_t>>(a) * as<Vec<uint32_t>>(b));
  return toIntegers(toDoubles(product) / toDoubles(c));
}

// For values below 4096, a float holds the product exactly, and the quotient of integers below 2^24
// never rounds up to the next integer. evenFloats and oddFloats convert the lower and the upper
// half of each 32-bit lane.
VISTREL_INLINE Vec<float> evenFloats(Vec<int16_t> v) {
  return __builtin_convertvector(as<Vec<int32_t>>(v) << 16 >> 16, Vec<float>);
}
VISTREL_INLINE Vec<float> oddFloats(Vec<int16_t> v) {
  return __builtin_convertvector(as<Vec<int32_t>>(v) >> 16, Vec<float>);
}
VISTREL_INLINE Vec<int16_t> productOver(Vec<int16_t> a, Vec<int16_t> b, Vec<int16_t> c) {
  const Vec<float> even = evenFloats(a) * evenFloats(b) / evenFloats(c);
  const Vec<float> odd = oddFloats(a) * oddFloats(b) / oddFloats(c);
  const auto low = __builtin_convertvector(even, Vec<int32_t>) & 0xFFFF;
  return as<Vec<int16_t>>(low | __builtin_convertvector(odd, Vec<int32_t>) << 16);
}

// Truncated quotients by n = 1 to 8, by a reciprocal that serves two dividends. It is slightly too
// large, so that a multiple of n never falls short, but by too little for other quotients to reach
// the next integer.
struct PairReciprocals {
  Vec<float> low, high;
};
constexpr float kJustAboveOne = 0x1.000008p0f;

VISTREL_INLINE float reciprocal(int n) { return kJustAboveOne / static_cast<float>(n); }
VISTREL_INLINE Vec<float> reciprocal(Vec<int32_t> n) {
  return kJustAboveOne / __builtin_convertvector(n, Vec<float>);
}
VISTREL_INLINE PairReciprocals reciprocal(Vec<int16_t> n) {
  const auto pairs = as<Vec<int32_t>>(n);
  return {reciprocal(pairs & 0xFFFF), reciprocal(pairs >> 16)};
}

VISTREL_INLINE int product(int a, float r) { return static_cast<int>(static_cast<float>(a) * r); }
VISTREL_INLINE Vec<int32_t> product(Vec<int32_t> a, Vec<float> r) {
  return __builtin_convertvector(__builtin_convertvector(a, Vec<float>) * r, Vec<int32_t>);
}
VISTREL_INLINE Vec<int16_t> product(Vec<int16_t> a, PairReciprocals r) {
  const auto pairs = as<Vec<int32_t>>(a);
  const auto low = product((pairs << 16) >> 16, r.low);
  const auto high = product(pairs >> 16, r.high);
  return as<Vec<int16_t>>((low & 0xFFFF) | (high << 16));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
