// Hamilton and Adams, US patent 5,629,734 (1997): green along the axis on which it changes less,
// then red and blue along the smoother diagonal, corrected by the second difference of green. m:
// the mosaic, g: complete green.
//
// Values are halves and quarters, truncated toward zero and then clamped at zero. A shift rounds
// down instead, but stores the same.
//
// quirk: unsensed-correction. The published method also corrects green by the second difference of
// the colour that the site senses. Here the term reads the other colour, which is zero at all five
// places, so it affects neither the costs nor the value.
//
// quirk: guard-green. Beyond the region green is zero where another colour is sensed.
#if defined(VISTREL_HAMILTON_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_HAMILTON_FORMULAS_INL_H
#undef VISTREL_HAMILTON_FORMULAS_INL_H
#else
#define VISTREL_HAMILTON_FORMULAS_INL_H
#endif

#include "common/depth.h"
#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
struct Hamilton {
  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site
    const auto dv = absolute(m(0, -1) - m(0, 1)), dh = absolute(m(-1, 0) - m(1, 0));
    const auto sv = m(0, -1) + m(0, 1), sh = m(-1, 0) + m(1, 0);
    return clampTo(select(dh < dv, sh >> 1, select(dh > dv, sv >> 1, (sv + sh) >> 2)), kLimit<T>);
  }
  template <class M, class G>
  VISTREL_INLINE static auto opposite(M m, G g) {  // at a red or blue site: the other of the two
    const auto a1 = 2 * g(0, 0) - g(-1, -1) - g(1, 1), a2 = 2 * g(0, 0) - g(1, -1) - g(-1, 1);
    const auto d1 = absolute(m(-1, -1) - m(1, 1)) + absolute(a1);
    const auto d2 = absolute(m(1, -1) - m(-1, 1)) + absolute(a2);
    const auto v1 = m(-1, -1) + m(1, 1) + a1, v2 = m(1, -1) + m(-1, 1) + a2;
    return clampTo(select(d1 < d2, v1 >> 1, select(d1 > d2, v2 >> 1, (v1 + v2) >> 2)), kLimit<T>);
  }
  template <class M, class G>
  VISTREL_INLINE static auto along(M m, G g) {  // at a green site: the colour of this row
    return straight(m(-1, 0) + m(1, 0), 2 * g(0, 0) - g(-1, 0) - g(1, 0));
  }
  template <class M, class G>
  VISTREL_INLINE static auto across(M m, G g) {  // at a green site: the colour above and below
    return straight(m(0, -1) + m(0, 1), 2 * g(0, 0) - g(0, -1) - g(0, 1));
  }

  // Combines the sum of two samples with the second difference of green, which counts half at a
  // green site.
  template <class V>
  VISTREL_INLINE static V straight(V sum, V difference) {
    return clampTo((2 * sum + difference) >> 2, kLimit<T>);
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
