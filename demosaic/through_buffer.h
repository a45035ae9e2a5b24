// Conversions through a work buffer.
#pragma once

#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"

namespace vistrel::core {

// Through the image and the guard of the work buffer. Returns false if an allocation fails.
template <class T>
bool sweepThroughBuffer(const Conversion<T>& conversion, MakeDemosaic<T>* make);

// The same. Regions of a single row or column are converted in place, pass after pass.
template <class T>
bool convertThroughBuffer(const Conversion<T>& conversion, const DemosaicAlgorithm<T>& algorithm);

}  // namespace vistrel::core
