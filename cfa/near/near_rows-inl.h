// Nearest neighbours inside a frame, where all that the formulas read is there.
#if defined(VISTREL_NEAR_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_NEAR_ROWS_INL_H
#undef VISTREL_NEAR_ROWS_INL_H
#else
#define VISTREL_NEAR_ROWS_INL_H
#endif

#include "cfa/near/near_rows.h"
#include "common/rows/pixel_row-inl.h"
#include "common/simd/split-inl.h"
#include "common/simd/taps-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
void keepBits(T* half, size_t n, T mask) {
  for (size_t k = 0; k < n; ++k) half[k] &= mask;
}

// Means of two and four, rounded half up.
struct RoundedMeans {
  static constexpr bool kWide = false;
  template <class V>
  VISTREL_INLINE static V two(V a, V b) {
    return roundedMean(a, b);
  }
  // The mean of the pair means is one too high where a low bit was lost in either of them and in
  // the last step.
  template <class V>
  VISTREL_INLINE static V four(V a, V b, V c, V d) {
    const V p = roundedMean(a, b), q = roundedMean(c, d);
    return roundedMean(p, q) - (((a ^ b) | (c ^ d)) & (p ^ q) & 1);
  }
};

// Truncated, of words below 16384.
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

// Of words that had one bit of room: half of the rounding survives.
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
  VISTREL_INLINE static auto opposite(M m) {  // there, the colour of the diagonals
    return Means::four(m(-1, -1), m(1, -1), m(-1, 1), m(1, 1));
  }
  template <class M>
  VISTREL_INLINE static auto along(M m) {  // at a green site: the colour of this row
    return Means::two(m(-1, 0), m(1, 0));
  }
  template <class M>
  VISTREL_INLINE static auto across(M m) {  // there, the colour of the rows above and below
    return Means::two(m(0, -1), m(0, 1));
  }
};

template <class Means>
struct FillNear {
  using F = Near<Means>;
  template <class T, int parity>
  using Samples = Tap<T, 2, parity>;
  template <class T, int parity>
  using Signed = ValueTap<LowHigh<T>, 2, parity>;

  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const HalfRowWindow<T, 2>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    const Samples<T, g> atGreen{rows, k};
    const Samples<T, c> atColour{rows, k};
    Halves<T> h;
    h.green[g] = atGreen(0, 0);
    h.own[c] = atColour(0, 0);
    if constexpr (Means::kWide) {
      const Signed<T, g> lowGreen{rows, k, {0}}, highGreen{rows, k, {1}};
      const Signed<T, c> lowColour{rows, k, {0}}, highColour{rows, k, {1}};
      h.own[g] = LowHigh<T>::join({F::along(lowGreen), F::along(highGreen)});
      h.opposite[g] = LowHigh<T>::join({F::across(lowGreen), F::across(highGreen)});
      h.green[c] = LowHigh<T>::join({F::green(lowColour), F::green(highColour)});
      h.opposite[c] = LowHigh<T>::join({F::opposite(lowColour), F::opposite(highColour)});
    } else {
      h.own[g] = F::along(atGreen);
      h.opposite[g] = F::across(atGreen);
      h.green[c] = F::green(atColour);
      h.opposite[c] = F::opposite(atColour);
    }
    return h;
  }
};

template <class T, class Means>
constexpr const auto& kNearPixels = kPixelRows<T, HalfRowWindow<T, 2>, FillNear<Means>>;

// Bytes are never scaled.
template <class T, class Means>
using MeansOf = std::conditional_t<sizeof(T) == 1, RoundedMeans, Means>;

template <class T>
constexpr NearKernels<T> kNear = {
    splitPairs<T>,
    keepBits<T>,
    {&kNearPixels<T, MeansOf<T, PlainMeans>>, &kNearPixels<T, MeansOf<T, HalfRoundedMeans>>,
     &kNearPixels<T, RoundedMeans>}};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
