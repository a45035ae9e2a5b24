// Laroche and Prescott, US patent 5,373,322 (1994): green along the axis on which the site's own
// colour differs less from its neighbours, then red and blue as differences to green. m: the
// mosaic, g: complete green.
//
// quirk: guard-green. Beyond the region green is zero where another colour is sensed, so the outer
// rows and columns take whole colour values for differences.
#if defined(VISTREL_LAROCHE_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_LAROCHE_FORMULAS_INL_H
#undef VISTREL_LAROCHE_FORMULAS_INL_H
#else
#define VISTREL_LAROCHE_FORMULAS_INL_H
#endif

#include "common/depth.h"
#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
struct Laroche {
  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site
    const auto own = m(0, 0);
    const auto dv = absolute(((m(0, 2) + m(0, -2)) >> 1) - own);
    const auto dh = absolute(((m(2, 0) + m(-2, 0)) >> 1) - own);
    const auto sh = m(-1, 0) + m(1, 0), sv = m(0, 1) + m(0, -1);
    return select(dh < dv, sh >> 1, select(dh > dv, sv >> 1, (sh + sv) >> 2));
  }
  template <class M, class G>
  VISTREL_INLINE static auto opposite(M m, G g) {  // at a red or blue site: the other of the two
    return clampTo(g(0, 0) + (((m(1, 1) - g(1, 1)) + (m(-1, 1) - g(-1, 1)) + (m(1, -1) - g(1, -1)) +
                               (m(-1, -1) - g(-1, -1))) >>
                              2),
                   kLimit<T>);
  }
  template <class M, class G>
  VISTREL_INLINE static auto along(M m, G g) {  // at a green site: the colour of this row
    return clampTo(g(0, 0) + (((m(1, 0) - g(1, 0)) + (m(-1, 0) - g(-1, 0))) >> 1), kLimit<T>);
  }
  template <class M, class G>
  VISTREL_INLINE static auto across(M m, G g) {  // at a green site: the colour above and below
    return clampTo(g(0, 0) + (((m(0, 1) - g(0, 1)) + (m(0, -1) - g(0, -1))) >> 1), kLimit<T>);
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
