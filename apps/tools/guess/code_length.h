// How well the neighbours of samples predict them.
#pragma once

#include "apps/tools/guess/row_reader.h"

namespace vistrel::app {

struct CodeLength {
  double bits;  // the mean of a sample, coded as the error of its prediction
  double unit;  // all samples are multiples of this power of two
};

// Measured at about `samples` places: the same ones of the file for all layouts, so that lengths
// differ by the layout alone.
CodeLength codeLengthOf(RowReader& reader, uint32_t width, size_t samples);

}  // namespace vistrel::app
