// Results of float32: samples divided by full scale.
#pragma once

#include "python/extension/result.h"

namespace vistrel::python {

// Turns the integers at the ends of rows [first, end) of a result, in all of its planes, into
// floats that fill the rows. `bytes` are those of an integer. Each float is the quotient by
// `divisor`, rounded to nearest.
void widen(const Result& result, size_t bytes, float divisor, size_t first, size_t end) noexcept;

}  // namespace vistrel::python
