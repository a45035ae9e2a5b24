// Decides the look of a frame from its samples.
#pragma once

#include "apps/look/look.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {

// Known parts stay as they are, but for gains and matrix of mono frames, which have no colours. The
// frame is a mosaic or mono, and not packed.
//
// kAuto: as kAstro for frames that look like astronomical ones; otherwise as kSrgb, but with a
// curve that lifts the shadows if the picture would be dark.
// kLinear: nothing is brightened.
Look decideLook(const vistrel_frame& frame, const LookChoice& choice,
                const vistrel_region& region = {});

}  // namespace vistrel::app
