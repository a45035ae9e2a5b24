// What memory alone costs: loops that only move bytes.
#pragma once

#include <vector>

#include "bench/frame.h"
#include "bench/measure.h"

namespace vistrel::core::bench {

// Reads one byte a pixel and writes three, with ordinary and with non-temporal stores; memcpy.
std::vector<Job> floorJobs(const Frame& frame);

}  // namespace vistrel::core::bench
