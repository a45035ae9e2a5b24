#include "apps/look/decide_calibrated.h"

#include <algorithm>

#include "apps/input/calibrated_frame.h"

namespace vistrel::app {

Look decideCalibrated(const vistrel_frame& frame, const LookChoice& choice,
                      const vistrel_calibration& calibration, uint32_t excess,
                      const vistrel_region& region) {
  Image memory;
  vistrel_calibration dark = calibration;
  dark.flat = nullptr;
  dark.hot_count = 0;
  const Look levels = decideLook(calibratedFrame(frame, dark, {}, excess, memory), choice, region);
  LookChoice rest = choice;
  rest.known.black = BlackLevels{};
  rest.known.white = levels.white - std::ranges::min(levels.black);
  Look look =
      decideLook(calibratedFrame(frame, calibration, levels.black, excess, memory), rest, region);
  look.black = levels.black;
  look.white = levels.white;
  return look;
}

}  // namespace vistrel::app
