// _files.read: frames in files, with what the files say about them.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

void bindRead(py::module_& module);

}  // namespace vistrel::python
