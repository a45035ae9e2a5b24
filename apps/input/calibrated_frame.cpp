#include "apps/input/calibrated_frame.h"

#include <algorithm>

namespace vistrel::app {

vistrel_frame calibratedFrame(const vistrel_frame& frame, const vistrel_calibration& calibration,
                              const std::array<uint32_t, 4>& black, uint32_t excess,
                              Image& memory) {
  vistrel_frame mono = frame;
  mono.phase = VISTREL_MONO;
  vistrel_conversion c = defaultConversion(mono);
  c.format = frame.bytes_per_sample == 1 ? VISTREL_MONO8 : VISTREL_MONO16;
  c.excess = excess;
  c.calibration = &calibration;
  std::ranges::copy(black, c.black);
  memory = convert(mono, c);
  mono.samples = memory.pixels.data();
  mono.size = memory.pixels.size();
  mono.stride = 0;
  mono.packing = 0;
  mono.alignment = VISTREL_LOW_BITS;
  mono.phase = frame.phase;
  return mono;
}

}  // namespace vistrel::app
