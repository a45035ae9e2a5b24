// Proves that the checker notices errors: it must catch functions that are broken on purpose, each
// with the expected kinds of failure, within the default number of cases.
#pragma once

#include <cstdint>

#include "tests/check/subject.h"

namespace vistrel::core::check {

// Prints a line for each; returns true if all were caught.
bool selfTest(const Catalogue& all, uint64_t seed);

}  // namespace vistrel::core::check
