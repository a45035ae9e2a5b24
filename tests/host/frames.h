// Frames whose conversion can be told by hand.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "host/vistrel.hpp"

namespace vistrel {

template <class T>
std::vector<T> samplesOf(uint32_t width, uint32_t height,
                         const std::function<uint32_t(uint32_t x, uint32_t y)>& sample) {
  std::vector<T> samples;
  for (uint32_t y = 0; y < height; ++y)
    for (uint32_t x = 0; x < width; ++x) samples.push_back(static_cast<T>(sample(x, y)));
  return samples;
}

// One sample for each filter colour, by the letters of the name of the phase.
inline std::function<uint32_t(uint32_t, uint32_t)> plainColour(uint32_t phase, uint32_t blue,
                                                               uint32_t green, uint32_t red) {
  return [=](uint32_t x, uint32_t y) {
    const char filter = vistrel_phase_name(phase)[2 * (y & 1) + (x & 1)];
    return filter == 'b' ? blue : filter == 'g' ? green : red;
  };
}

inline vistrel_error refusalOf(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  vistrel_layout layout{};
  vistrel_error error{};
  vistrel_get_layout(&frame, &conversion, &layout, &error);
  return error;
}

}  // namespace vistrel
