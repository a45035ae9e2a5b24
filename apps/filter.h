// The colour filters of a mosaic.
#pragma once

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

// The channel of a blue, green, red pixel that the filter at (x, y) lets through, in a Bayer phase.
inline uint32_t channelAt(uint32_t phase, uint32_t x, uint32_t y) {
  return VISTREL_BLUE - vistrel_colour_at(phase, x, y);
}

}  // namespace vistrel::app
