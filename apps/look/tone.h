// Exposure and curve of ordinary pictures.
#pragma once

#include "apps/look/brightness.h"

namespace vistrel::app {

// Sets exposure and transfer unless they are known. Without `mayCompress`, a transfer that isn't
// known is sRGB's.
void decideTone(const Brightness& brightness, const KnownLook& known, bool mayCompress, Look& look);

// The exposure, in 1/4096, within what a look can have.
uint32_t exposureOf(double exposure);

}  // namespace vistrel::app
