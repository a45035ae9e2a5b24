#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/pixel_grouping_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
class GroupingDemosaic : public GreenFirst<T> {
 public:
  GroupingDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : GreenFirst<T>(job, *VISTREL_BY_LEVEL(kPixelGroupingKernels<T>), arena) {}
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> pixelGrouping() {
  return {makeDemosaic<T, GroupingDemosaic>, greenFirstInPlace<base::PixelGrouping<T>, T>};
}
VISTREL_DEMOSAIC_ALGORITHM(pixelGrouping);

}  // namespace vistrel::core
