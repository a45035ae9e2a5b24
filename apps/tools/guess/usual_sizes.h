// The sizes that sensors have.
#pragma once

#include <cstdint>
#include <vector>

#include "apps/options/geometry.h"

namespace vistrel::app {

// Of common sensors and of their usual modes.
const std::vector<Size>& usualSizes();

bool isUsual(const Size& size);

// How likely a size is before anything is known about the file: the logarithm to base 2, up to a
// constant.
double priorOf(const Size& size);

}  // namespace vistrel::app
