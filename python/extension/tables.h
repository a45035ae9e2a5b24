// Phases, formats and algorithms, as the host layer lists them.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

void bindTables(py::module_& module);

}  // namespace vistrel::python
