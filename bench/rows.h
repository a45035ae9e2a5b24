// The table of comparisons: the conversion, the peer, and how much faster ours has to be.
#pragma once

#include <vector>

#include "bench/task.h"
#include "cpu/level.h"

namespace vistrel::core::bench {

// Ratios of the peer's time to ours; stated for AVX2 and above.
struct Target {
  double required, goal;
  double goalAvx512;  // 0: same as goal

  double goalAt(Level level) const {
    return level == Level::avx512 && goalAvx512 > 0 ? goalAvx512 : goal;
  }
};

struct Row {
  Conversion ours;
  Peer peer;
  Target target;
  Task (*make)(const Conversion&, const Frame&) = makeOurs;
};

// The rows whose peer this build has.
const std::vector<Row>& rows();

}  // namespace vistrel::core::bench
