// Lin, "Pixel grouping for color filter array demosaicing" (2003): green from the smoothest of four
// directions, then red and blue from the hue transit between two neighbours; at red and blue sites,
// along the smoother diagonal. m: the mosaic, g: complete green.
//
// quirk: guard-green. Beyond the region green is zero where another colour is sensed: the rim takes
// its green for a peak.
#if defined(VISTREL_PIXEL_GROUPING_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PIXEL_GROUPING_FORMULAS_INL_H
#undef VISTREL_PIXEL_GROUPING_FORMULAS_INL_H
#else
#define VISTREL_PIXEL_GROUPING_FORMULAS_INL_H
#endif

#include "common/depth.h"
#include "common/simd/lanes-inl.h"
#include "common/simd/quotient-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// A colour in the middle of three positions: greens L1, L2, L3; colours V1 and V3 of the outer two.
template <class V>
VISTREL_INLINE V hueTransit(V L1, V L2, V L3, V V1, V V3) {
  const auto isBetween = ((L1 < L2) & (L2 < L3)) | ((L1 > L2) & (L2 > L3));
  const V unused = V{} + 4096;  // a divisor whose quotients fit the lane
  const V line = V1 + productOver(V3 - V1, L2 - L1, select(isBetween, L3 - L1, unused));
  const V bend = (2 * (L2 + V1 + V3) - (L1 + L3)) / 4;
  return select(isBetween, line, bend);
}

template <class T>
struct PixelGrouping {
  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site
    const auto own = m(0, 0);
    const auto n = own - m(0, -2), e = own - m(2, 0), s = own - m(0, 2), w = own - m(-2, 0);
    const auto up = m(0, -1), right = m(1, 0), down = m(0, 1), left = m(-1, 0);
    const auto dV = absolute(up - down), dH = absolute(left - right);
    const auto dN = dV + 2 * absolute(n), dE = dH + 2 * absolute(e);
    const auto dS = dV + 2 * absolute(s), dW = dH + 2 * absolute(w);
    const auto least = leastOf(smaller(smaller(dN, dE), smaller(dS, dW)));
    const auto sv = up + down, sh = left + right;
    // quirk: exchanged-directions. South is taken if west is the smoothest, and west if south is.
    const auto v = select(dN <= least, sv + 2 * up + n,
                          select(dE <= least, sh + 2 * right + e,
                                 select(dS > least, sv + 2 * down + s, sh + 2 * left + w)));
    return storedGreen(v >> 2);
  }
  template <class M, class G>
  VISTREL_INLINE static auto opposite(M m, G g) {  // at a red or blue site: the other of the two
    const auto own = m(0, 0), centre = g(0, 0);
    const auto rising = absolute(m(2, -2) - own) + absolute(own - m(-2, 2)) +
                        absolute(centre - g(-1, 1)) + absolute(centre - g(1, -1)) +
                        absolute(m(1, -1) - m(-1, 1));
    const auto falling = absolute(m(-2, -2) - own) + absolute(own - m(2, 2)) +
                         absolute(centre - g(1, 1)) + absolute(centre - g(-1, -1)) +
                         absolute(m(-1, -1) - m(1, 1));
    const auto falls = rising > falling;
    return clampTo(
        hueTransit(select(falls, g(-1, -1), g(1, -1)), centre, select(falls, g(1, 1), g(-1, 1)),
                   select(falls, m(-1, -1), m(1, -1)), select(falls, m(1, 1), m(-1, 1))),
        kLimit<T>);
  }
  template <class M, class G>
  VISTREL_INLINE static auto along(M m, G g) {  // at a green site: the colour of this row
    return clampTo(hueTransit(g(-1, 0), g(0, 0), g(1, 0), m(-1, 0), m(1, 0)), kLimit<T>);
  }
  template <class M, class G>
  VISTREL_INLINE static auto across(M m, G g) {  // at a green site: the colour above and below
    return clampTo(hueTransit(g(0, -1), g(0, 0), g(0, 1), m(0, -1), m(0, 1)), kLimit<T>);
  }

  // quirk: overshoot-to-black. The limit for bytes is 256, of which a byte keeps 0.
  template <class V>
  VISTREL_INLINE static V storedGreen(V v) {
    if constexpr (sizeof(T) == 1) return clampTo(v, 256) & 255;
    return clampTo(v, kLimit<T>);
  }
  // quirk: cost-ceiling. The search for the smallest cost begins at 65535: if all costs exceed it,
  // none is chosen and south remains. Signed 16-bit values never exceed it.
  template <class V>
  VISTREL_INLINE static V leastOf(V costs) {
    if constexpr (std::is_same_v<V, Vec<int16_t>>)
      return costs;
    else
      return smaller(costs, V(V{} + 65535));
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
