// The mean of the two or four nearest sites of a colour. m(dx, dy) is the mosaic's sample dx
// columns to the right and dy rows below.
#if defined(VISTREL_BILINEAR_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_BILINEAR_FORMULAS_INL_H
#undef VISTREL_BILINEAR_FORMULAS_INL_H
#else
#define VISTREL_BILINEAR_FORMULAS_INL_H
#endif

#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

struct Bilinear {
  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site
    return mean4(m(-1, 0), m(1, 0), m(0, -1), m(0, 1));
  }
  template <class M>
  VISTREL_INLINE static auto opposite(M m) {  // at a red or blue site: the other of the two
    return mean4(m(-1, -1), m(-1, 1), m(1, -1), m(1, 1));
  }
  template <class M>
  VISTREL_INLINE static auto along(M m) {  // at a green site: the colour of this row
    return mean2(m(-1, 0), m(1, 0));
  }
  template <class M>
  VISTREL_INLINE static auto across(M m) {  // at a green site: the colour above and below
    return mean2(m(0, -1), m(0, 1));
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
