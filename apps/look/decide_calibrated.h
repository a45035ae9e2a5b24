// Decides the look of a frame whose sensor is calibrated.
#pragma once

#include "apps/look/decide.h"

namespace vistrel::app {

// Levels come from the frame as the sensor saw it, the rest from the calibrated one.
Look decideCalibrated(const vistrel_frame& frame, const LookChoice& choice,
                      const vistrel_calibration& calibration, uint32_t excess,
                      const vistrel_region& region);

}  // namespace vistrel::app
