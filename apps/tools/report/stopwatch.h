// How long conversions take at each instruction set level.
#pragma once

#include <string>
#include <vector>

#include "apps/options/algorithm.h"

namespace vistrel::app {

struct Timing {
  AlgorithmChoice algorithm;
  std::string level;
  uint32_t bits;                // that the algorithm receives, after truncation
  double nsPerPixel = 0;        // the fastest of all rounds
  double medianNsPerPixel = 0;  // of all rounds
};

// Times every algorithm at every level of this machine, once per round, so that a temporary
// slowdown of the machine affects all of them alike. One thread, all checks included.
std::vector<Timing> timeAll(const vistrel_frame& frame,
                            const std::vector<AlgorithmChoice>& algorithms, int rounds);

}  // namespace vistrel::app
