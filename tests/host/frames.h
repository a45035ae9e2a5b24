// Frames whose conversion can be worked out by hand.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel {

template <class T>
std::vector<T> samplesOf(uint32_t width, uint32_t height,
                         const std::function<uint32_t(uint32_t x, uint32_t y)>& sample) {
  std::vector<T> samples;
  for (uint32_t y = 0; y < height; ++y)
    for (uint32_t x = 0; x < width; ++x) samples.push_back(static_cast<T>(sample(x, y)));
  return samples;
}

constexpr uint32_t kMax = 0xFFFFFFFF;

// Descriptions without samples.
inline vistrel_frame bayer(uint32_t width, uint32_t height) {
  return {nullptr, 0, 0, width, height, 2, 12, VISTREL_RGGB, 0, 0, {}};
}
inline vistrel_frame mono(uint32_t width, uint32_t height) {
  return {nullptr, 0, 0, width, height, 1, 8, VISTREL_MONO, 0, 0, {}};
}

// One sample for each filter colour, by the letters of the name of the phase.
inline std::function<uint32_t(uint32_t, uint32_t)> plainColour(uint32_t phase, uint32_t blue,
                                                               uint32_t green, uint32_t red) {
  return [=](uint32_t x, uint32_t y) {
    const char filter = vistrel_phase_name(phase)[2 * (y & 1) + (x & 1)];
    return filter == 'b' ? blue : filter == 'g' ? green : red;
  };
}

// The same at all places.
inline void setBlack(vistrel_conversion& conversion, uint32_t black) {
  std::fill_n(conversion.black, 4, black);
}

inline std::vector<uint16_t> samples16Of(const Image& image) {
  std::vector<uint16_t> samples(image.pixels.size() / 2);
  std::memcpy(samples.data(), image.pixels.data(), image.pixels.size());
  return samples;
}

// Every pixel of the image, or none if they differ.
inline std::vector<uint32_t> plainPixel(const Image& image) {
  const uint32_t channels = image.layout.channels;
  const bool wide = image.layout.row_bytes > size_t{image.layout.width} * channels;
  const auto samples =
      wide ? samples16Of(image) : std::vector<uint16_t>(image.pixels.begin(), image.pixels.end());
  for (size_t i = channels; i < samples.size(); ++i)
    if (samples[i] != samples[i - channels]) return {};
  return {samples.begin(), samples.begin() + channels};
}

inline vistrel_error rejectionOf(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  vistrel_layout layout{};
  vistrel_error error{};
  vistrel_get_layout(&frame, &conversion, &layout, &error);
  return error;
}

}  // namespace vistrel
