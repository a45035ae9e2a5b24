// Determines which bytes of source and work buffer a conversion of a mosaic may touch.
#pragma once

#include "tests/check/subject.h"

namespace vistrel::core::check {

// How algorithms use their memory.
enum class MemoryLayout {
  guarded,     // in place, in a work buffer with a guard of two pixels
  blocks,      // blocks of 8 by 2 pixels, two rows lower in the work buffer
  nearest,     // a primitive, without a guard; reads two samples around the region
  homogeneity  // the same, but reads the whole frame
};

// Draws the arguments of a conversion so that its result is defined.
Call drawMosaic(Draw& draw, bool wide, MemoryLayout memoryLayout);

Layout mosaicLayout(const Call& call, bool wide, MemoryLayout memoryLayout);

// The part that all algorithms with a guarded work buffer share.
void setGuarded(Layout& layout, const Call& call);

}  // namespace vistrel::core::check
