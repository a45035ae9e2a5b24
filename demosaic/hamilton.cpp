#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/conversion.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/hamilton_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
void hamilton(const Conversion<T>& c) {
  if (isDegenerate(c.region)) return greenFirstInPlace<base::Hamilton<T>>(c);
  sweepGreenFirst(c, *VISTREL_BY_LEVEL(kHamilton<T>));
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC(ImageColorGradientHamilton, hamilton)

}  // namespace vistrel::core
