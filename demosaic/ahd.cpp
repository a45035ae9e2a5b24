#include "cfa/ahd/ahd.h"

#include "demosaic/algorithm.h"
#include "demosaic/primitive.h"

namespace vistrel::core {

namespace {

// The primitive takes red for blue and blue for red: so blue comes first.
template <class T>
class AhdDemosaic {
 public:
  AhdDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : job_(job),
        region_({job.source, {job.columns, job.height}, job.mosaic.exchanged()}, job.roi,
                {.shift = static_cast<int>(scaling(job)), .redLast = job.order != job.mosaic},
                arena) {}

  auto sweep() { return region_.sweep(*job_.image, job_.rows); }

 private:
  DemosaicJob<T> job_;
  AhdRegion<T> region_;
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> ahd() {
  return {makeDemosaic<T, AhdDemosaic<T>>};
}
VISTREL_DEMOSAIC_ALGORITHM(ahd);

}  // namespace vistrel::core
