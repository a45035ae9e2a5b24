#include "common/level.h"
#include "common/simd.h"
#include "demosaic/conversion.h"
#include "demosaic/depth.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/hamilton.inl"
#include "common/each_level.inl"

namespace vistrel {

namespace {

template <class T>
void hamilton(const Conversion<T>& c) {
  if (isThin(c.region)) return greenFirstInPlace<base::Hamilton<T>>(c);
  sweepGreenFirst(c, *VISTREL_BY_LEVEL(kHamilton<T>));
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC(ImageColorGradientHamilton, hamilton)

}  // namespace vistrel
