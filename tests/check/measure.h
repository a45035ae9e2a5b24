// How long the same cases take on either side.
#pragma once

#include <vector>

#include "cpu/level.h"
#include "tests/check/subject.h"

namespace vistrel::core::check {

// Prints one line a case and level.
void measure(const Catalogue& all, const Case& calls, const std::vector<Level>& levels);

}  // namespace vistrel::core::check
