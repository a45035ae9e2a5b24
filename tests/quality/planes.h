// Pictures as planes of real numbers: 0 is black, 1 is full scale.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace vistrel::quality {

struct Planes {
  int width = 0, height = 0;
  std::array<std::vector<float>, 3> channels;  // red, green, blue

  Planes() = default;
  Planes(int w, int h) : width(w), height(h) {
    for (std::vector<float>& c : channels)
      c.resize(static_cast<size_t>(w) * static_cast<size_t>(h));
  }
  size_t indexOf(int x, int y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
  }
  float& at(size_t channel, int x, int y) { return channels[channel][indexOf(x, y)]; }
  float at(size_t channel, int x, int y) const { return channels[channel][indexOf(x, y)]; }
};

}  // namespace vistrel::quality
