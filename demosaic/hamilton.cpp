#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/hamilton_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
class HamiltonDemosaic : public GreenFirst<T> {
 public:
  HamiltonDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : GreenFirst<T>(job, *VISTREL_BY_LEVEL(kHamiltonKernels<T>), arena) {}
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> hamilton() {
  return {makeDemosaic<T, HamiltonDemosaic>, greenFirstInPlace<base::Hamilton<T>, T>};
}
VISTREL_DEMOSAIC_ALGORITHM(hamilton);

}  // namespace vistrel::core
