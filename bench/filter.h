// The 3x3 filters, as conversions of an image into itself.
#pragma once

#include "bench/task.h"

namespace vistrel::core::bench {

// Values of Conversion::algorithmCode for filters.
constexpr uint32_t kBox = 0, kFiveTaps = 1, kGauss = 2;
constexpr int kGaussDivisor = 16;

Layout imageLayout(const Conversion& conversion);

// The frame's red sites as a colourless image of the conversion's format.
Buffer<uint8_t> makeImage(const Conversion& conversion, const Frame& frame);

// The library's filter. It changes its image in every run.
Task makeFilter(const Conversion& conversion, const Frame& frame);

}  // namespace vistrel::core::bench
