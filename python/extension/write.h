// _files.write: pictures and raw frames.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

void bindWrite(py::module_& module);

}  // namespace vistrel::python
