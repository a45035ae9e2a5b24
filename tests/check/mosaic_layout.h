// Which bytes of source and work buffer a conversion of a mosaic may touch.
#pragma once

#include "tests/check/subject.h"

namespace vistrel::core::check {

// The ways in which algorithms use their memory.
enum class Road {
  guarded,     // in place, in a work buffer with a guard of two pixels
  blocks,      // blocks of 8 by 2 pixels, two rows lower in the work buffer
  nearest,     // a primitive, without a guard; reads two samples round the region
  homogeneity  // the same, and reads the whole frame
};

// The arguments of a conversion by this road, so that its answer is laid down.
Call drawMosaic(Draw& draw, bool wide, Road road);

Layout mosaicLayout(const Call& call, bool wide, Road road);

// The guarded layout's part, for the function that makes it.
void setGuarded(Layout& layout, const Call& call);

}  // namespace vistrel::core::check
