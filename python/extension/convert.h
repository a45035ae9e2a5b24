// _core.convert: frames to images.
#pragma once

#include "python/extension/request.h"

namespace vistrel::python {

// Converts by a request that these arguments made.
py::object convertBy(Request& request, const py::args& arguments);

void bindConvert(py::module_& module);

}  // namespace vistrel::python
