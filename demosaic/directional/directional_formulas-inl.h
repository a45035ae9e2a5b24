// Green minus red and green minus blue are estimated along rows and along columns, and blended by
// their roughness: docs/directional.md. The weights follow Pekkucuksen and Altunbasak, "Gradient
// based threshold free color filter array interpolation" (2010).
//
// s: the mosaic. Differences are in quarters of a level. Formulas for a direction are written for
// rows; a tap that exchanges its axes makes them those for columns.
#if defined(VISTREL_DIRECTIONAL_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_DIRECTIONAL_FORMULAS_INL_H
#undef VISTREL_DIRECTIONAL_FORMULAS_INL_H
#else
#define VISTREL_DIRECTIONAL_FORMULAS_INL_H
#endif

#include "common/simd/logarithm-inl.h"
#include "demosaic/directional/directional_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Blends of a and b. share: that of b, negated, in units of 1/2^15, or of 1/2^7 in lanes of 32
// bits. If the logarithm of b's roughness is that of a's plus t, it is part[t] / 128, and below
// zero 1 - part[-t] / 128. The table has 64 - part[n].
constexpr uint8_t kMissingParts[16] = {0,  16, 31, 42, 50, 55, 59, 61,
                                       62, 63, 63, 64, 64, 64, 64, 64};

VISTREL_INLINE Vec<int16_t> shareOf(Vec<int16_t> t) {
  const Vec<int16_t> scaled = t << 3;  // the upper byte counts 1; the lower one is 0
  const auto n = smaller(absolute(scaled), Vec<int16_t>{} + (15 << 8));
  const auto missing = as<Vec<int16_t>>(lookUp(kMissingParts, as<Vec<uint8_t>>(n)));
  return withSign(missing, t) - (64 << 8);
}
VISTREL_INLINE Vec<int32_t> shareOf(Vec<int32_t> t) {
  const auto n = smaller(absolute(t), Vec<int32_t>{} + 15);
  const auto missing = as<Vec<int32_t>>(lookUp(kMissingParts, as<Vec<uint8_t>>(n)));
  return withSign(missing, t) - 64;
}

VISTREL_INLINE Vec<int16_t> blend(Vec<int16_t> a, Vec<int16_t> b, Vec<int16_t> share) {
  return a + roundedProduct(a - b, share);
}
VISTREL_INLINE Vec<int32_t> blend(Vec<int32_t> a, Vec<int32_t> b, Vec<int32_t> share) {
  return a + (((a - b) * share + 64) >> 7);
}

template <class Lane>
struct Directional {
  using V = Vec<Lane>;
  using Changes = Vec<Change<Lane>>;

  VISTREL_INLINE static Changes distance(V a, V b) { return as<Changes>(absolute(a - b)); }
  // The changes on the way around a site, from neighbour to neighbour.
  VISTREL_INLINE static Changes around(V a, V b, V c, V d) {
    return distance(a, b) + distance(b, c) + distance(c, d) + distance(d, a);
  }
  // The change of differences, in steps of two levels.
  VISTREL_INLINE static Changes change(V a, V b) { return distance(a, b) >> 3; }

  // A value taken from the samples around, or through differences: mainly what changes less.
  VISTREL_INLINE static V choose(V direct, V through, Changes ofDifferences, Changes ofSamples) {
    return blend(through, direct, shareOf(logarithm(ofSamples + 8) - logarithm(ofDifferences + 1)));
  }

  // Four times the neighbours less six of the site, less the second neighbours.
  template <class M>
  VISTREL_INLINE static V curved(M s) {
    const V here = s(0, 0);
    return ((s(-1, 0) + s(1, 0) - here) << 2) - (s(-2, 0) + s(2, 0) + here + here);
  }
  template <class M>
  VISTREL_INLINE static V differenceAtGreen(M s) {
    return (1 - curved(s)) >> 1;
  }
  template <class M>
  VISTREL_INLINE static V differenceAtColour(M s) {
    return (curved(s) + 1) >> 1;
  }

  template <class D>
  VISTREL_INLINE static V mean(D d) {
    return (((d(-1, 0) + d(1, 0)) >> 1) + d(0, 0) + 1) >> 1;
  }

  template <class C>
  VISTREL_INLINE static V logOfRoughness(C c) {
    Changes sum = c(-1, -1) + c(0, -1) + c(1, -1);
    sum += c(-1, 0) + c(0, 0) + c(1, 0);
    sum += c(-1, 1) + c(0, 1) + c(1, 1);
    return logarithm(sum + 1);
  }

  // At a red or blue site. m, l: means along the row and their logarithms.
  template <class M>
  VISTREL_INLINE static V blendAlong(M m, M l) {
    return blend(m(-1, 0), m(1, 0), shareOf(l(1, 0) - l(-1, 0)));
  }
  // The share of what is known along the column.
  template <class L>
  VISTREL_INLINE static V shareOfColumn(L h, L v) {
    return shareOf(smaller(v(0, -1), v(0, 1)) - smaller(h(-1, 0), h(1, 0)));
  }

  // Of the site's colour, to the nearest sites of that colour.
  template <class S>
  VISTREL_INLINE static Changes ownChanges(S s) {
    const V here = s(0, 0);
    return distance(s(-2, 0), here) + distance(s(2, 0), here) + distance(s(0, -2), here) +
           distance(s(0, 2), here);
  }

  // At a red or blue site, from the blends b.
  template <class S, class B>
  VISTREL_INLINE static V settled(S s, B b, V shareOfColumn) {
    const V left = s(-1, 0), right = s(1, 0), up = s(0, -1), down = s(0, 1);
    const V here = b(0, 0), others[] = {b(-2, 0), b(2, 0), b(0, -2), b(0, 2)};
    const V least = smaller(smaller(others[0], others[1]), smaller(others[2], others[3]));
    const V most = larger(larger(others[0], others[1]), larger(others[2], others[3]));
    const Changes changes = change(others[0], here) + change(others[1], here) +
                            change(others[2], here) + change(others[3], here);
    const V direct = blend((left + right) << 1, (up + down) << 1, shareOfColumn) - (s(0, 0) << 2);
    const Changes samples = larger(around(left, up, right, down) << 1, ownChanges(s) >> 5);
    return choose(direct, larger(smaller(here, most), least), changes, samples);
  }

  // d: the settled differences.
  template <class S, class D>
  VISTREL_INLINE static V green(S s, D d) {  // at a red or blue site
    return s(0, 0) + ((d(0, 0) + 2) >> 2);
  }
  template <class S, class D>
  VISTREL_INLINE static V opposite(S s, D d) {  // there: the other of the two
    const V a = d(-1, -1), b = d(1, 1), c = d(1, -1), e = d(-1, 1);
    const V p = s(-1, -1), q = s(1, 1), r = s(1, -1), t = s(-1, 1);
    const Changes falling = change(a, b), rising = change(c, e);
    const V smoother = blend((a + b + 1) >> 1, (c + e + 1) >> 1,
                             shareOf(logarithm(rising + 1) - logarithm(falling + 1)));
    return choose((p + q + r + t + 2) >> 2, s(0, 0) + ((d(0, 0) - smoother + 2) >> 2),
                  falling + rising, around(p, r, q, t) >> 1);
  }
  // The colour of the sites beside a green one. cd, cs: the sums of three changes.
  template <class S, class D>
  VISTREL_INLINE static V beside(S s, D d, Changes cd, Changes cs) {
    return choose((s(-1, 0) + s(1, 0) + 1) >> 1, s(0, 0) - ((d(-1, 0) + d(1, 0) + 4) >> 3), cd, cs);
  }
};

// Exchanges the axes of a tap.
template <class M>
struct Transposed {
  M m;
  VISTREL_INLINE auto operator()(int dx, int dy) const { return m(dy, dx); }
};
template <class M>
Transposed(M) -> Transposed<M>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
