// Hirakawa and Parks, "Adaptive homogeneity-directed demosaicing algorithm" (2005): the frame is
// reconstructed twice, with green along rows and along columns, and each pixel comes from the image
// in which more of its neighbours are similar.
#if defined(VISTREL_AHD_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_AHD_FORMULAS_INL_H
#undef VISTREL_AHD_FORMULAS_INL_H
#else
#define VISTREL_AHD_FORMULAS_INL_H
#endif

#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
using UnsignedWidened = Vec<std::make_unsigned_t<Widened<T>>>;

// The mean of the neighbours a and b, corrected by the second difference of the site's own colour
// l, c, r, but never beyond a and b. Each term rounds down separately.
template <class V>
VISTREL_INLINE V directedGreen(V a, V b, V l, V c, V r) {
  const V led = ((c + c - l - r) >> 2) + ((a + b) >> 1);
  return larger(smaller(led, larger(a, b)), smaller(a, b));
}

// m: the mosaic. d: the differences of sensed red and blue to the green of their sites.
template <class T>
struct Ahd {
  template <class M>
  VISTREL_INLINE static auto greenAlongRow(M m) {  // at a red or blue site
    return directedGreen(m(-1, 0), m(1, 0), m(-2, 0), m(0, 0), m(2, 0));
  }
  template <class M>
  VISTREL_INLINE static auto greenAlongColumn(M m) {
    return directedGreen(m(0, -1), m(0, 1), m(0, -2), m(0, 0), m(0, 2));
  }
  template <class V, class D>
  VISTREL_INLINE static V opposite(V g, D d) {  // at a red or blue site: the other of the two
    return limited(g + ((d(-1, -1) + d(-1, 1) + d(1, -1) + d(1, 1)) >> 2));
  }
  template <class V, class D>
  VISTREL_INLINE static V along(V g, D d) {  // at a green site: the colour of this row
    return limited(g + ((d(-1, 0) + d(1, 0)) >> 1));
  }
  template <class V, class D>
  VISTREL_INLINE static V across(V g, D d) {  // at a green site: the colour above and below
    return limited(g + ((d(0, -1) + d(0, 1)) >> 1));
  }

 private:
  template <class V>
  VISTREL_INLINE static V limited(V v) {
    return clampTo(v, static_cast<T>(~T{0}));
  }
};

template <class T>
struct LumaChromaValues {
  Vec<Widened<T>> y, u, v;
};

// Luma and chroma without offsets, from differences to green: 66 R + 129 G + 25 B, 112 B - 74 G -
// 38 R and 112 R - 94 G - 18 B. Luma, and intermediate results of chroma, also use the sign bit.
template <class T, class Weights>
VISTREL_INLINE LumaChromaValues<T> lumaChromaOf(Vec<Widened<T>> R, Vec<Widened<T>> G,
                                                Vec<Widened<T>> B, const Weights& w) {
  using U = UnsignedWidened<T>;
  const U g = as<U>(G), r = as<U>(R) - g, b = as<U>(B) - g;
  return {as<Vec<Widened<T>>>((g * w.w220 + r * w.w66 + b * w.w25 + 128) >> 8),
          as<Vec<Widened<T>>>(b * w.w112 - r * w.w38 + 128) >> 8,
          as<Vec<Widened<T>>>(r * w.w112 - b * w.w18 + 128) >> 8};
}

template <class T>
struct Distance {
  Vec<Widened<T>> luma, chroma;

  VISTREL_INLINE Distance(const LumaChromaValues<T>& a, const LumaChromaValues<T>& b)
      : luma(absolute(a.y - b.y)) {
    const auto u = as<UnsignedWidened<T>>(a.u - b.u), v = as<UnsignedWidened<T>>(a.v - b.v);
    // Bytes give at most 57,480, to be compared as unsigned. 16-bit samples may wrap; their sum is
    // compared as signed.
    const auto sum = u * u + v * v;
    chroma = as<Vec<Widened<T>>>(sizeof(T) == 1 ? sum ^ 0x8000 : sum);
  }
};

template <class T>
struct Limits {
  Vec<Widened<T>> luma, chroma;

  // The smaller of max(a, b) and max(c, d).
  VISTREL_INLINE Limits(const Distance<T>& a, const Distance<T>& b, const Distance<T>& c,
                        const Distance<T>& d)
      : luma(smaller(larger(a.luma, b.luma), larger(c.luma, d.luma))),
        chroma(smaller(larger(a.chroma, b.chroma), larger(c.chroma, d.chroma))) {}

  VISTREL_INLINE auto exceededBy(const Distance<T>& d) const {  // -1 if so
    return (d.luma > luma) | (d.chroma > chroma);
  }
};

// 4 plus the number of similar neighbours in the image along rows, minus that in the image along
// columns. h, v: the luma and chroma of these images.
template <class T, class Tap>
VISTREL_INLINE Vec<Widened<T>> score(Tap h, Tap v) {
  const LumaChromaValues<T> hHere = h(0, 0), vHere = v(0, 0);
  const Distance<T> hLeft(hHere, h(-1, 0)), hRight(hHere, h(1, 0));
  const Distance<T> vUp(vHere, v(0, -1)), vDown(vHere, v(0, 1));
  const Limits<T> limits(hLeft, hRight, vUp, vDown);
  Vec<Widened<T>> sum = limits.exceededBy(hLeft) + limits.exceededBy(hRight) -
                        limits.exceededBy(vUp) - limits.exceededBy(vDown) + 4;
  sum += limits.exceededBy({hHere, h(0, -1)});
  sum += limits.exceededBy({hHere, h(0, 1)});
  sum -= limits.exceededBy({vHere, v(-1, 0)});
  sum -= limits.exceededBy({vHere, v(1, 0)});
  return sum;
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
