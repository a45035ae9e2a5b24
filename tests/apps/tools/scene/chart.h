// The colour patches of the test scene, as chart.txt lists them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vistrel {

struct Patch {
  std::string name;
  uint32_t left, top, width, height;  // in a scene of 1536x1024 pixels
  std::array<double, 3> colour;       // red, green, blue of the display

  bool isNeutral() const { return colour[0] == colour[1] && colour[1] == colour[2]; }
};

std::vector<Patch> readChart();

}  // namespace vistrel
