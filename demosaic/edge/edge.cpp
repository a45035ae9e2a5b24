#include <algorithm>
#include <iterator>
#include <limits>

#include "common/arith.h"
#include "common/work_layout.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/edge/block_ends.h"

#define VISTREL_BODY "demosaic/edge/edge_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

// Four falling thresholds: the largest, then three, two and one quarter of it.
constexpr EdgeSettings settingsOf(uint32_t threshold, uint32_t limit) {
  return {{static_cast<int>(threshold), static_cast<int>((3 * threshold) >> 2),
           static_cast<int>(threshold >> 1), static_cast<int>(threshold >> 2)},
          static_cast<int>(limit)};
}

// The threshold is on the scale of bytes: 255 stands for the largest sample.
template <class T>
EdgeSettings settingsOf(const DemosaicJob<T>& job) {
  if (sizeof(T) == 1) return settingsOf(job.threshold, 255);
  const uint32_t largest = shl(1, job.bits) - 1;
  return settingsOf(job.threshold * largest / 255, largest);
}

template <class T>
class EdgeDemosaic {
 public:
  EdgeDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : job_(job), settings_(settingsOf(job)), columns_(static_cast<size_t>(job.columns)),
        ring_(job, arena), measures_(columns_, arena), ends_(ring_, job, settings_) {}

  // Begins with the upper row of a pair.
  auto sweep() {
    return Sweep(job_.rows, kUnbounded, stage(0, [this](int y) { ring_.load(y, kernels_); }),
                 stage(BlockEnds<T>::reach(job_.columns) - 1, [this](int y) { measure(y); }),
                 stage(1, [this](int y) { fill(y); }));
  }

 private:
  static constexpr size_t kBetweenRows = 3 * 2 * kGuard;  // samples

  // Whether narrow lanes can hold all sums over rows from y on.
  bool isNarrow(int y) const {
    return isTwelveBits(settings_.limit) && ring_.depths().areTwelveBitsFrom(y);
  }

  void measure(int y) { isNarrow(y - 2) ? measureAs<int16_t>(y) : measureAs<Widened<T>>(y); }

  template <class Lane>
  void measureAs(int y) {
    kernels_.template of<Lane>().measure[job_.mosaic.colourParity(y)](
        ring_.template window<2>(y), columns_ / 2, measures_.template made<Lane>(y));
  }

  // quirk: wrapped-blocks. The last block of a pair's upper row overwrites the beginning of the
  // lower row, which earlier blocks have written.
  size_t overwrittenPixels(int y) const {
    const bool isLower = ((y - job_.rows.first) & 1) == 1;
    if (!isLower || columns_ <= BlockEnds<T>::kBlock) return 0;
    return std::max<size_t>(ends_.pixels(), 2 * kGuard) - 2 * kGuard;
  }

  void fill(int y) {
    RowSink<T> sink = job_.image->row(y);
    const size_t overwritten = overwrittenPixels(y);
    if (overwritten) sink.hold();
    sink.fetch(ring_.nextSource());
    isNarrow(y - 3) ? fillAs<int16_t>(y, sink) : fillAs<Widened<T>>(y, sink);
    std::copy_n(beyond_ + kBetweenRows, 3 * overwritten, sink.pixels());
    job_.image->finish(y, sink);
    ends_.compute(y, beyond_);
    if (job_.margins) job_.margins->beyond(y, beyond_, 3 * ends_.pixels());
  }

  template <class Lane>
  void fillAs(int y, RowSink<T>& sink) {
    kernels_.template of<Lane>().pixels.ofRow(job_.order, y)(surroundings<Lane>(y), columns_, sink);
  }

  // Clamps the limit and the thresholds to what a lane can hold: larger ones exceed all samples.
  template <class Lane>
  EdgeWindow<T, Lane> surroundings(int y) {
    static constexpr int kLargest = std::numeric_limits<Lane>::max();
    EdgeWindow<T, Lane> window{ring_.template window<1>(y),
                               measures_.template window<Lane>(y),
                               {},
                               std::min(settings_.limit, kLargest)};
    std::transform(std::begin(settings_.thresholds), std::end(settings_.thresholds),
                   window.thresholds,
                   [](int t) { return static_cast<Lane>(std::clamp(t, -1, kLargest)); });
    return window;
  }

  DemosaicJob<T> job_;
  EdgeSettings settings_;
  size_t columns_;
  const EdgeKernels<T>& kernels_ = *VISTREL_BY_LEVEL(kEdgeKernels<T>);
  EdgeMosaicRing<T> ring_;
  MeasureRing<T> measures_;
  BlockEnds<T> ends_;
  T beyond_[3 * BlockEnds<T>::kBlock] = {};  // beyond the end of the row before
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> edge() {
  return {makeDemosaic<T, EdgeDemosaic<T>>};
}
VISTREL_DEMOSAIC_ALGORITHM(edge);

}  // namespace vistrel::core
