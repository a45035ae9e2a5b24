// Measures one row of the table on one frame: checks both sides, then times them together.
#pragma once

#include <string>

#include "bench/measure.h"
#include "bench/rows.h"

namespace vistrel::core::bench {

struct Result {
  const Row& row;
  const FrameSize& size;
  Level level;
  Timing ours, peer;  // nanoseconds per input pixel

  double ratio() const { return peer.minimum / ours.minimum; }
  double medianRatio() const { return peer.median / ours.median; }
  bool hasTarget() const { return level >= Level::avx2; }
  const char* mark() const;  // met, acceptable, MISSED; - if there is no target
};

std::string rowName(const Row& row, const FrameSize& size);

// Throws if the two sides show different pictures or another thread is running.
Result compare(const Row& row, const FrameSize& size, Level level, int rounds);

// timing: of one run on a whole frame.
Timing perPixel(const Timing& timing, const FrameSize& size);

}  // namespace vistrel::core::bench
