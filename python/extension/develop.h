// _core.develop and _core.decide: pictures for the eye, and the looks that they have.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

void bindDevelop(py::module_& module);

}  // namespace vistrel::python
