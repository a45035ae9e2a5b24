// The processor levels by name, and the library steered to one of them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/level.h"

namespace vistrel::bench {

const char* nameOf(Level level);  // e.g. AVX2
std::optional<Level> levelNamed(const std::string& name);

// AVX2, for which the goals are stated, and what is above it; else the widest level there is.
std::vector<Level> usualLevels();

// From here on our vectorised loops run at this level. The peers choose their own.
void setLevel(Level level);

}  // namespace vistrel::bench
