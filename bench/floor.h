// The cost of memory access alone: loops that only move bytes.
#pragma once

#include <vector>

#include "bench/frame.h"
#include "bench/measure.h"

namespace vistrel::core::bench {

// Loops that read one byte per pixel and write three, with ordinary and with non-temporal stores,
// and memcpy.
std::vector<Job> floorJobs(const Frame& frame);

}  // namespace vistrel::core::bench
