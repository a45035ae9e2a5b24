// Black level and white balance, on the mosaic.
#pragma once

#include <algorithm>
#include <array>

#include "vistrel/vistrel_host.h"

namespace vistrel::host {

using Gains = std::array<uint32_t, 3>;  // red, green, blue, in 1/4096

// The gains of the conversion, measured on the frame if it says so. Throws Rejection.
Gains gainsOf(const vistrel_frame& frame, const vistrel_conversion& conversion);

// The gray-world gains of a frame that has passed all checks. Throws Rejection for excess bits.
Gains measureGains(const vistrel_frame& frame, const vistrel_conversion& conversion);

inline uint32_t aboveBlack(uint32_t sample, uint32_t black) {
  return std::max(sample, black) - black;
}

// Nothing exceeds 32 bits: a sample has 16, and the largest gain is 2^16.
inline uint32_t amplified(uint32_t sample, uint32_t gain, uint32_t fullScale) {
  return std::min((sample * gain + VISTREL_GAIN_ONE / 2) / VISTREL_GAIN_ONE, fullScale);
}

}  // namespace vistrel::host
