// _core.guess: the format of a headerless raw file.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

void bindGuess(py::module_& module);

}  // namespace vistrel::python
