// The table: what is converted, against whom, and how much faster it has to be.
#pragma once

#include <vector>

#include "bench/task.h"
#include "cpu/level.h"

namespace vistrel::core::bench {

// Ratios, peer's time / our time; stated for AVX2 and up.
struct Target {
  double least, goal;
  double goalAvx512;  // 0: the same as goal

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
