// How long conversions take at each level of the library's loops.
#pragma once

#include <string>
#include <vector>

#include "apps/options/algorithm.h"

namespace vistrel::app {

struct Timing {
  Algorithm algorithm;
  std::string level;
  uint32_t bits;                // that the algorithm gets: a deeper frame is reduced
  double nsPerPixel = 0;        // the fastest of all rounds
  double medianNsPerPixel = 0;  // of all rounds
};

// Every algorithm at every level of this machine, once in each round, so that a slow while of the
// machine does not fall upon one of them. One thread, all checks included.
std::vector<Timing> timeAll(const vistrel_frame& frame, const std::vector<Algorithm>& algorithms,
                            int rounds);

}  // namespace vistrel::app
