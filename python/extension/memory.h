// Memory for results, kept for the next one: fresh pages cost more than a conversion.
#pragma once

#include <pybind11/numpy.h>

namespace vistrel::python {

// A new array with undefined elements. Large ones return their memory to a small pool when they
// are destroyed.
pybind11::array newArray(const pybind11::dtype& dtype,
                         const pybind11::array::ShapeContainer& shape);

// Frees the memory in the pool.
void emptyPool();

}  // namespace vistrel::python
