// Proves that the checker sees what is wrong: functions broken on purpose, each of which must
// be caught, by the right sign, within the ordinary cases.
#pragma once

#include <cstdint>

#include "tests/check/subject.h"

namespace vistrel::core::check {

// Prints a line for each; true when all were caught.
bool selfTest(const Catalogue& all, uint64_t seed);

}  // namespace vistrel::core::check
