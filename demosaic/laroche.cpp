#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/conversion.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/laroche_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
void laroche(const Conversion<T>& c) {
  if (isDegenerate(c.region)) return greenFirstInPlace<base::Laroche<T>>(c);
  sweepGreenFirst(c, *VISTREL_BY_LEVEL(kLaroche<T>));
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC(ImageColorGradientLaroche, laroche)

}  // namespace vistrel::core
