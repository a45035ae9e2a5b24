// A small part of a frame that looks like all of it.
#pragma once

#include "vistrel/vistrel.hpp"

namespace vistrel::gstreamer {

// Pairs of rows of a region, evenly spaced, of some `samples` samples in all; fewer if the region
// is smaller. The frame is not packed and of the same phase; its samples lie in `memory`.
vistrel_frame rowPairsOf(const vistrel_frame& frame, const vistrel_region& region, size_t samples,
                         Bytes& memory);

}  // namespace vistrel::gstreamer
