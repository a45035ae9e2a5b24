#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/pixel_grouping_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
const GreenFirstKernels<T>& kernels() {
  return *VISTREL_BY_LEVEL(kPixelGroupingKernels<T>);
}

}  // namespace

template <class T>
DemosaicAlgorithm<T> pixelGrouping() {
  return greenFirst<base::PixelGrouping<T>, T, kernels<T>>();
}
VISTREL_DEMOSAIC_ALGORITHM(pixelGrouping);

}  // namespace vistrel::core
