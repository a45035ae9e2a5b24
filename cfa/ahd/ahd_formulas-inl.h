// Hirakawa and Parks, "Adaptive homogeneity-directed demosaicing algorithm" (2005): the frame is
// reconstructed twice, with green along rows and along columns, and each pixel comes from the image
// in which more of its neighbours are similar.
#if defined(VISTREL_AHD_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_AHD_FORMULAS_INL_H
#undef VISTREL_AHD_FORMULAS_INL_H
#else
#define VISTREL_AHD_FORMULAS_INL_H
#endif

#include "cfa/ahd/ahd_kernels.h"
#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
using UnsignedWide = Vec<std::make_unsigned_t<Widened<T>>>;

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

// Luma and chroma without offsets, from differences to green: 66 R + 129 G + 25 B, 112 B - 74 G -
// 38 R and 112 R - 94 G - 18 B. Luma, and intermediate results of chroma, also use the sign bit.
template <class T>
struct LumaChromaOf {
  Wide<T> y, u, v;

  VISTREL_INLINE LumaChromaOf(Wide<T> R, Wide<T> G, Wide<T> B, const LumaChromaWeights<T>& w) {
    using U = UnsignedWide<T>;
    const U g = as<U>(G), r = as<U>(R) - g, b = as<U>(B) - g;
    y = as<Wide<T>>((g * w.w220 + r * w.w66 + b * w.w25 + 128) >> 8);
    u = as<Wide<T>>(b * w.w112 - r * w.w38 + 128) >> 8;
    v = as<Wide<T>>(r * w.w112 - b * w.w18 + 128) >> 8;
  }
};

template <class T>
struct Distance {
  Wide<T> luma, chroma;

  VISTREL_INLINE Distance(const LumaChroma<T>& a, ptrdiff_t i, const LumaChroma<T>& b, ptrdiff_t k)
      : luma(absolute(load(a.y + i) - load(b.y + k))) {
    const auto u = as<UnsignedWide<T>>(load(a.u + i) - load(b.u + k));
    const auto v = as<UnsignedWide<T>>(load(a.v + i) - load(b.v + k));
    // Bytes give at most 57,480, to be compared as unsigned. 16-bit samples may wrap; their sum is
    // compared as signed.
    const auto sum = u * u + v * v;
    chroma = as<Wide<T>>(sizeof(T) == 1 ? sum ^ 0x8000 : sum);
  }
};

template <class T>
struct Limits {
  Wide<T> luma, chroma;

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
// columns.
template <class T, int parity>
VISTREL_INLINE Wide<T> score(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v,
                             ptrdiff_t k) {
  constexpr int other = 1 - parity;
  const ptrdiff_t left = k + parity - 1, right = k + parity;  // in the other half row
  const LumaChroma<T>&hHere = h[1][parity], &vHere = v[1][parity];
  const Distance<T> hLeft(hHere, k, h[1][other], left), hRight(hHere, k, h[1][other], right);
  const Distance<T> vUp(vHere, k, v[0][parity], k), vDown(vHere, k, v[2][parity], k);
  const Limits<T> limits(hLeft, hRight, vUp, vDown);
  Wide<T> sum = limits.exceededBy(hLeft) + limits.exceededBy(hRight) - limits.exceededBy(vUp) -
                limits.exceededBy(vDown) + 4;
  sum += limits.exceededBy({hHere, k, h[0][parity], k});
  sum += limits.exceededBy({hHere, k, h[2][parity], k});
  sum -= limits.exceededBy({vHere, k, v[1][other], left});
  sum -= limits.exceededBy({vHere, k, v[1][other], right});
  return sum;
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
