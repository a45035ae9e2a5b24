#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/laroche_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
const GreenFirstKernels<T>& kernels() {
  return *VISTREL_BY_LEVEL(kLarocheKernels<T>);
}

}  // namespace

template <class T>
DemosaicAlgorithm<T> laroche() {
  return greenFirst<base::Laroche<T>, T, kernels<T>>();
}
VISTREL_DEMOSAIC_ALGORITHM(laroche);

}  // namespace vistrel::core
