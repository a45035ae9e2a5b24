// Statistics of the samples of a frame.
#pragma once

#include <cstdint>
#include <optional>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

struct Statistics {
  uint32_t lowest, highest;
  double mean;
  uint32_t usedBits;     // up to the highest bit set in any sample
  uint32_t zeroLowBits;  // low bits that are 0 in all samples
  // The largest value of the frame's bits, with the zero low bits cleared. For a frame of 16 bits,
  // whose real depth may be unknown, the largest value of the used bits.
  uint32_t fullScale;
  uint32_t saturation;      // the white level, if one is known below full scale; else full scale
  double percentSaturated;  // samples at saturation or above
  double percentAtHighest;  // samples at the highest value
};

// Packed samples, as FrameFile reads them.
Statistics statisticsOf(const vistrel_frame& frame, std::optional<double> white = {});

}  // namespace vistrel::app
