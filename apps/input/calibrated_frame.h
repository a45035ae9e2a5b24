// Frames after the calibration of their sensor.
#pragma once

#include <array>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// The frame's samples, in their own bits, after this calibration and these black levels. `memory`
// holds them.
vistrel_frame calibratedFrame(const vistrel_frame& frame, const vistrel_calibration& calibration,
                              const std::array<uint32_t, 4>& black, uint32_t excess, Image& memory);

}  // namespace vistrel::app
