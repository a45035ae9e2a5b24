#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/hamilton_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
const GreenFirstKernels<T>& kernels() {
  return *VISTREL_BY_LEVEL(kHamiltonKernels<T>);
}

}  // namespace

template <class T>
DemosaicAlgorithm<T> hamilton() {
  return greenFirst<base::Hamilton<T>, T, kernels<T>>();
}
VISTREL_DEMOSAIC_ALGORITHM(hamilton);

}  // namespace vistrel::core
