// Kimmel, "Demosaicing: image reconstruction from color CCD samples" (1999), one round: weighted
// means of neighbours, first of green and then of hues, the ratios of a colour to green. The more
// samples change at a neighbour, the less it weighs.
//
// m: the mosaic, g: complete green, x: one complete colour, hue: its hues. Floating-point results
// depend on the order of sums: they are evaluated as written here.
#if defined(VISTREL_KIMMEL_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_KIMMEL_FORMULAS_INL_H
#undef VISTREL_KIMMEL_FORMULAS_INL_H
#else
#define VISTREL_KIMMEL_FORMULAS_INL_H
#endif

#include "common/simd/reals-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class V>
VISTREL_INLINE V square(V v) {
  return v * v;
}

// Doubles use the exact root. Floats use the approximate root, and a bounded hue.
VISTREL_INLINE double weight(double x) { return 1 / squareRoot(x); }
VISTREL_INLINE Vec<double> weight(Vec<double> x) { return 1 / squareRoot(x); }
VISTREL_INLINE float weight(float x) { return approximateRoot(x); }
VISTREL_INLINE Vec<float> weight(Vec<float> x) { return approximateRoot(x); }

template <class V>
VISTREL_INLINE V ratio(V colour, V green) {
  return colour / larger(green, V(V{} + 1));
}
// The hue is zero where green is zero.
template <class V>
VISTREL_INLINE V plainHue(V colour, V green) {
  return select(green > 0, ratio(colour, green), V{});
}
// quirk: bounded-hue. In single precision a hue is at most the green that it is divided by.
template <class V>
VISTREL_INLINE V boundedHue(V colour, V green) {
  return smaller(ratio(colour, green), green);
}

VISTREL_INLINE double hueOf(double colour, double green) { return plainHue(colour, green); }
VISTREL_INLINE Vec<double> hueOf(Vec<double> colour, Vec<double> green) {
  return plainHue(colour, green);
}
VISTREL_INLINE float hueOf(float colour, float green) { return boundedHue(colour, green); }
VISTREL_INLINE Vec<float> hueOf(Vec<float> colour, Vec<float> green) {
  return boundedHue(colour, green);
}

struct Kimmel {
  static constexpr float kAcross = 0.5f;                // between neighbours two pixels apart
  static constexpr float kDiagonally = 0x1.6a09e6p-2f;  // 1 / (2 * sqrt(2)) in single precision

  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site
    const auto own = m(0, 0);
    const auto dH = square((m(-1, 0) - m(1, 0)) * kAcross) + 1;
    const auto dV = square((m(0, -1) - m(0, 1)) * kAcross) + 1;
    const auto wE = weight(square((own - m(2, 0)) * kAcross) + dH);
    const auto wW = weight(square((own - m(-2, 0)) * kAcross) + dH);
    const auto wN = weight(square((own - m(0, -2)) * kAcross) + dV);
    const auto wS = weight(square((own - m(0, 2)) * kAcross) + dV);
    return (wS * m(0, 1) + (wN * m(0, -1) + (wW * m(-1, 0) + wE * m(1, 0)))) /
           (((wW + wE) + wN) + wS);
  }

  template <class V, class M, class H>
  VISTREL_INLINE static V opposite(V g, M m, H hue) {  // there: the other of the two
    const V own = m(0, 0);
    const V dA = square((m(1, -1) - m(-1, 1)) * kDiagonally) + 1;
    const V dB = square((m(-1, -1) - m(1, 1)) * kDiagonally) + 1;
    const V wNW = weight(square((m(-2, -2) - own) * kDiagonally) + dB);
    const V wSW = weight(square((m(-2, 2) - own) * kDiagonally) + dA);
    const V wNE = weight(square((m(2, -2) - own) * kDiagonally) + dA);
    const V wSE = weight(square((m(2, 2) - own) * kDiagonally) + dB);
    V sum = hue(-1, 1) * wSW + hue(1, -1) * wNE;
    sum = hue(-1, -1) * wNW + sum;
    sum = hue(1, 1) * wSE + sum;
    return (g * sum) / (((wSW + wNE) + wNW) + wSE);
  }

  template <class X, class G, class H>
  VISTREL_INLINE static auto atGreen(X x, G g, H hue) {  // either colour at a green site
    const auto own = g(0, 0);
    const auto dH = square((x(-1, 0) - x(1, 0)) * kAcross) + 1;
    const auto dV = square((x(0, -1) - x(0, 1)) * kAcross) + 1;
    const auto wE = weight(square((own - g(1, 0)) * kAcross) + dH);
    const auto wW = weight(square((own - g(-1, 0)) * kAcross) + dH);
    const auto wN = weight(square((own - g(0, -1)) * kAcross) + dV);
    const auto wS = weight(square((own - g(0, 1)) * kAcross) + dV);
    auto sum = hue(-1, 0) * wW + hue(1, 0) * wE;
    sum = hue(0, -1) * wN + sum;
    sum = hue(0, 1) * wS + sum;
    return (sum * own) / (((wW + wE) + wN) + wS);
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
