#include "cfa/near/near.h"
#include "demosaic/algorithm.h"
#include "demosaic/primitive.h"

namespace vistrel::core {

namespace {

// The 16-bit version works on samples scaled to all 16 bits.
template <class T>
class NearDemosaic {
 public:
  NearDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : job_(job),
        region_(
            {job.source, {job.columns, job.height}, job.order.exchanged(), Rounding(scaling(job))},
            job.roi, arena) {}

  auto sweep() { return region_.sweep(*job_.image, job_.rows); }

 private:
  DemosaicJob<T> job_;
  NearRegion<T> region_;
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> near() {
  return {makeDemosaic<T, NearDemosaic<T>>, nullptr, nullptr, true};
}
VISTREL_DEMOSAIC_ALGORITHM(near);

}  // namespace vistrel::core
