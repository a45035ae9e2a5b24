#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/laroche_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
class LarocheDemosaic : public GreenFirst<T> {
 public:
  LarocheDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : GreenFirst<T>(job, *VISTREL_BY_LEVEL(kLarocheKernels<T>), arena) {}
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> laroche() {
  return {makeDemosaic<T, LarocheDemosaic>, greenFirstInPlace<base::Laroche<T>, T>};
}
VISTREL_DEMOSAIC_ALGORITHM(laroche);

}  // namespace vistrel::core
