// The arrays that conversions fill.
#pragma once

#include "python/extension/request.h"

namespace vistrel::python {

// A result array, and where the host layer stores its samples. Those of float32 results lie at the
// ends of their rows, to be widened there.
struct Result {
  py::array array;
  vistrel_image image;
  size_t planes;      // 1, or one for each channel
  size_t rowSamples;  // of one plane
  size_t rows;        // of one plane
};

// A new array if `out` is None.
Result resultOf(const Request& request, const vistrel_layout& layout, py::handle out);

}  // namespace vistrel::python
