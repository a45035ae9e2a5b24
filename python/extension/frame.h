// NumPy's arrays as frames.
#pragma once

#include <pybind11/numpy.h>

#include "python/extension/rejection.h"

namespace vistrel::python {

// A frame, and the array that has its samples: the caller's, or a copy where the host layer needs
// one.
struct ArrayFrame {
  vistrel_frame frame;
  py::array samples;
};

// `bits` is None or an integer, `align` is "low" or "high".
ArrayFrame frameOf(py::handle raw, py::handle phase, py::handle bits, py::handle align);

// Copies samples of the other byte order.
void makeNative(ArrayFrame& input);

// The array itself, or one that shares the memory that an object offers by the buffer protocol or
// by __array_interface__.
py::array arrayOf(py::handle object, const char* name);

// Whether its samples have this machine's byte order.
bool isNative(const py::array& array);

// As NumPy prints it: "uint8", ">u2".
std::string nameOf(const py::dtype& dtype);

}  // namespace vistrel::python
