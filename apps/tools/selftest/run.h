// Runs the selftest's conversions on this machine.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vistrel::app::selftest {

struct Difference {
  std::string combination;  // "vng, 10 bits, gbrg, binning 1"
  std::string level;        // "avx2"
  uint64_t expected, got;
};

struct Summary {
  std::vector<std::string> levels;
  size_t combinations;  // at each level
  std::vector<Difference> differences;
};

// Runs every conversion at every level of this machine.
Summary run();

}  // namespace vistrel::app::selftest
