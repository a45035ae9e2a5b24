// Nearest neighbours: means of the two or four nearest sites, green along the smaller gradient.
// m: the mosaic.
#if defined(VISTREL_NEAR_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_NEAR_FORMULAS_INL_H
#undef VISTREL_NEAR_FORMULAS_INL_H
#else
#define VISTREL_NEAR_FORMULAS_INL_H
#endif

#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Means of two and four, rounded half up.
struct RoundedMeans {
  static constexpr bool kWide = false;
  template <class V>
  VISTREL_INLINE static V two(V a, V b) {
    return roundedMean(a, b);
  }
  // The mean of the pairs' means is one too high if a low bit was lost in one of them and again in
  // the last step.
  template <class V>
  VISTREL_INLINE static V four(V a, V b, V c, V d) {
    const V p = roundedMean(a, b), q = roundedMean(c, d);
    return roundedMean(p, q) - (((a ^ b) | (c ^ d)) & (p ^ q) & 1);
  }
};

// Truncating means, of 16-bit samples below 16384.
struct PlainMeans {
  static constexpr bool kWide = false;
  template <class V>
  VISTREL_INLINE static V two(V a, V b) {
    return (a + b) >> 1;
  }
  template <class V>
  VISTREL_INLINE static V four(V a, V b, V c, V d) {
    return (a + b + c + d) >> 2;
  }
};

// Means of 16-bit samples scaled up by one bit: half of the rounding survives.
struct HalfRoundedMeans {
  static constexpr bool kWide = true;
  template <class V>
  VISTREL_INLINE static V two(V a, V b) {
    return (a + b) >> 1;
  }
  template <class V>
  VISTREL_INLINE static V four(V a, V b, V c, V d) {
    return (a + b + c + d + 1) >> 2;
  }
};

template <class V>
VISTREL_INLINE V difference(V a, V b) {
  return larger(a, b) - smaller(a, b);
}

template <class Means>
struct Near {
  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site, along the smaller gradient
    const auto dv = difference(m(0, -2), m(0, 2)), dh = difference(m(-2, 0), m(2, 0));
    const auto n = m(0, -1), w = m(-1, 0), e = m(1, 0), s = m(0, 1);
    return select(dv == dh, Means::four(n, s, w, e),
                  select(smaller(dv, dh) == dv, Means::two(n, s), Means::two(w, e)));
  }
  template <class M>
  VISTREL_INLINE static auto opposite(M m) {  // at a red or blue site: the other of the two
    return Means::four(m(-1, -1), m(1, -1), m(-1, 1), m(1, 1));
  }
  template <class M>
  VISTREL_INLINE static auto along(M m) {  // at a green site: the colour of this row
    return Means::two(m(-1, 0), m(1, 0));
  }
  template <class M>
  VISTREL_INLINE static auto across(M m) {  // at a green site: the colour above and below
    return Means::two(m(0, -1), m(0, 1));
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
