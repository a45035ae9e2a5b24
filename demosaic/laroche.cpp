#include "common/level.h"
#include "common/simd.h"
#include "demosaic/conversion.h"
#include "demosaic/depth.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/laroche.inl"
#include "common/each_level.inl"

namespace vistrel {

namespace {

template <class T>
void laroche(const Conversion<T>& c) {
  if (isThin(c.region)) return greenFirstInPlace<base::Laroche<T>>(c);
  sweepGreenFirst(c, *VISTREL_BY_LEVEL(kLaroche<T>));
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC(ImageColorGradientLaroche, laroche)

}  // namespace vistrel
