// _core.unpack: packed frames to samples.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

void bindUnpack(py::module_& module);

}  // namespace vistrel::python
