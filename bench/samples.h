// The cost of a frame's bytes becoming rows of samples, each of which stays in cache.
#pragma once

#include <vector>

#include "bench/frame.h"
#include "bench/measure.h"

namespace vistrel::core::bench {

// Unpacking, preparation and scanning at the current level.
std::vector<Job> sampleJobs(const Frame& frame);

}  // namespace vistrel::core::bench
