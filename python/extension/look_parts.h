// Looks as Python has them.
#pragma once

#include "apps/look/look.h"
#include "python/extension/rejection.h"

namespace vistrel::python {

// The parts that are known, as keyword arguments of vistrel.Look.
py::dict partsOf(const app::KnownLook& known);

// All parts; a mono frame has no colours.
py::dict partsOf(const app::Look& look, bool isMono);

}  // namespace vistrel::python
