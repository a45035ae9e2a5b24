// Cok, US patent 4,642,678 (1987): green is a mean. Red and blue are green times the mean hue of
// the neighbours, where a hue is the ratio of a colour to green. m: the mosaic, g: green at the
// site, h: hues.
//
// quirk: hue-loses-one. Hues are rounded doubles, and sums are evaluated in the order written here,
// so green times a hue can fall just short of the exact whole number.
#if defined(VISTREL_COK_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_COK_FORMULAS_INL_H
#undef VISTREL_COK_FORMULAS_INL_H
#else
#define VISTREL_COK_FORMULAS_INL_H
#endif

#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// A hue in samples, before the division.
template <class V>
struct Ratio {
  V colour, green;
};

struct Cok {
  template <class V>
  VISTREL_INLINE static Ratio<V> hue(V colour, V green) {  // zero where green is zero
    return {select(green > 0, colour, V{}), larger(green, V(V{} + 1))};
  }
  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site
    return mean4(m(-1, 0), m(1, 0), m(0, -1), m(0, 1));
  }
  template <class V, class H>
  VISTREL_INLINE static V opposite(V g, H h) {  // at a red or blue site: the other of the two
    return g * (h(-1, -1) + h(1, -1) + h(1, 1) + h(-1, 1)) * 0.25;
  }
  template <class V, class H>
  VISTREL_INLINE static V along(V g, H h) {  // at a green site: the colour of this row
    return g * (h(-1, 0) + h(1, 0)) * 0.5;
  }
  template <class V, class H>
  VISTREL_INLINE static V across(V g, H h) {  // at a green site: the colour above and below
    return g * (h(0, -1) + h(0, 1)) * 0.5;
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
