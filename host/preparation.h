// Black level and white balance of the mosaic.
#pragma once

#include <array>

#include "samples/prepare.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

using Gains = std::array<uint32_t, 3>;  // red, green, blue, in 1/4096
constexpr Gains kNoGains{VISTREL_GAIN_ONE, VISTREL_GAIN_ONE, VISTREL_GAIN_ONE};

// The black levels of pixel (x, y) of the frame and of the next one in its row.
core::ColumnPair<uint32_t> blackOf(const vistrel_conversion& conversion, int64_t x, int64_t y);

// The gains of the conversion, measured on the frame if it asks for that. Throws Rejection.
Gains gainsOf(const vistrel_frame& frame, const vistrel_conversion& conversion);

}  // namespace vistrel::host
