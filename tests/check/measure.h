// Measures how long a case takes on each side.
#pragma once

#include <vector>

#include "cpu/level.h"
#include "tests/check/subject.h"

namespace vistrel::core::check {

// Prints one line per case and level.
void measure(const Catalogue& all, const Case& calls, const std::vector<Level>& levels);

}  // namespace vistrel::core::check
