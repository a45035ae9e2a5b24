// What the samples of a frame are like.
#pragma once

#include <cstdint>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

struct Statistics {
  uint32_t lowest, highest;
  double mean;
  uint32_t usedBits;     // up to the highest bit that any sample sets
  uint32_t zeroLowBits;  // bits at the lower end that no sample sets
  // The largest value of the frame's bits, without the zero low bits. Where a frame counts as 16
  // bits only because nothing tells its depth, the used bits take their place.
  uint32_t fullScale;
  double percentSaturated;  // samples at full scale or above
  double percentAtHighest;  // samples at the highest value
};

// Packed samples, as FrameFile reads them.
Statistics statisticsOf(const vistrel_frame& frame);

}  // namespace vistrel::app
