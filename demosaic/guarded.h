// The common form of the algorithms in the guarded layout: scatter the mosaic, fill in the missing
// colours, convert. One sweep does all three, a row at a time.
#pragma once

#include "common/rows/pixel_kernels.h"
#include "demosaic/job.h"
#include "demosaic/mosaic_ring.h"

namespace vistrel::core {

// A sweep that begins with smoothing; the algorithm's own stages follow. Job and ring must outlive
// the sweep.
template <class T, class... OwnStages>
auto sweepSmoothed(const DemosaicJob<T>& job, MosaicRing<T>& ring, OwnStages... ownStages) {
  return Sweep(job.rows, {0, job.height}, stage(0, [&ring](int y) { ring.load(y); }),
               stage(1, [&ring](int y) { ring.smooth(y); }), ownStages...);
}

// The same, with a last stage that fills in the pixels of a row by pixelRow(y, sink).
template <class T, class PixelRow, class... OwnStages>
auto sweepGuarded(const DemosaicJob<T>& job, MosaicRing<T>& ring, int reachOfLast,
                  PixelRow pixelRow, OwnStages... ownStages) {
  return sweepSmoothed(job, ring, ownStages..., stage(reachOfLast, [&job, &ring, pixelRow](int y) {
                         RowSink<T> sink = job.image->row(y);
                         if (job.margins) job.margins->guard(y, ring, sink.pixels());
                         sink.fetch(ring.nextSource());
                         pixelRow(y, sink);
                         job.image->finish(y, sink);
                       }));
}

}  // namespace vistrel::core
