#include "tests/quality/algorithms.h"

#include <cstring>

#include "vistrel/vistrel.hpp"

namespace vistrel::quality {
namespace {

std::vector<uint16_t> mosaicOf(const Planes& light, uint32_t bits) {
  const double largest = (1 << bits) - 1;
  std::vector<uint16_t> samples;
  for (int y = 0; y < light.height; ++y)
    for (int x = 0; x < light.width; ++x) {
      const auto channel = static_cast<size_t>(x % 2 + y % 2);
      samples.push_back(static_cast<uint16_t>(light.at(channel, x, y) * largest + 0.5));
    }
  return samples;
}

std::vector<uint16_t> converted(const std::vector<uint16_t>& samples, const Planes& size,
                                uint32_t bits, uint32_t code) {
  const vistrel_frame frame = frameOf(samples, static_cast<uint32_t>(size.width),
                                      static_cast<uint32_t>(size.height), bits, VISTREL_RGGB);
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.format = VISTREL_RGB48;
  conversion.algorithm = code;
  const Image image = convert(frame, conversion);
  std::vector<uint16_t> rgb(image.pixels.size() / 2);
  std::memcpy(rgb.data(), image.pixels.data(), image.pixels.size());
  return rgb;
}

}  // namespace

const std::array<Algorithm, 5> kAlgorithms{{{"bilinear", VISTREL_BILINEAR},
                                            {"near", VISTREL_NEAR},
                                            {"edge", VISTREL_EDGE},
                                            {"ahd", VISTREL_AHD},
                                            {"directional", VISTREL_DIRECTIONAL}}};

Planes demosaiced(const Planes& light, uint32_t bits, const Algorithm& algorithm) {
  const std::vector<uint16_t> rgb = converted(mosaicOf(light, bits), light, bits, algorithm.code);
  Planes planes(light.width, light.height);
  for (size_t i = 0; i < rgb.size(); ++i)
    planes.channels[i % 3][i / 3] = rgb[i] / static_cast<float>((1 << bits) - 1);
  return planes;
}

}  // namespace vistrel::quality
