// _core.convert: frames to images.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

void bindConvert(py::module_& module);

}  // namespace vistrel::python
