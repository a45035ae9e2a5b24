// The colour filters of a mosaic.
#pragma once

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

// The channel of a blue, green, red pixel that the filter at (x, y) lets through. The letters of
// the phase's name are the filters of its 2x2 block.
inline uint32_t channelAt(uint32_t phase, uint32_t x, uint32_t y) {
  const char filter = vistrel_phase_name(phase)[2 * (y & 1) + (x & 1)];
  return filter == 'b' ? 0 : filter == 'g' ? 1 : 2;
}

}  // namespace vistrel::app
