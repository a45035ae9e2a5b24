#include "bench/frame.h"

#include <cmath>
#include <random>
#include <vector>

namespace vistrel::core::bench {

namespace {

// Light along one axis, 0.5 .. 1: a few waves across the frame, so that all tiles differ.
std::vector<double> wave(unsigned length, double waves, double phase) {
  std::vector<double> light(length);
  for (unsigned i = 0; i < length; ++i)
    light[i] = 0.75 + 0.25 * std::sin(phase + 6.283185307 * waves * i / length);
  return light;
}

}  // namespace

Frame makeFrame(const FrameSize& size, unsigned factor, unsigned significantBits) {
  Frame frame{size, significantBits, allocate<uint16_t>(size.pixels()),
              allocate<uint8_t>(size.pixels())};
  constexpr unsigned kBits = 16;
  constexpr double kFilter[2][2] = {{0.9, 0.7}, {0.7, 0.5}};  // red, green / green, blue
  constexpr unsigned kNoise = 2048;                           // of 65536
  const double peak = (1 << kBits) - 2.0 * kNoise;
  const auto columns = wave(size.width, 1.3, 0.4);
  const auto rows = wave(size.height, 0.8, 2.0);
  std::minstd_rand random(1);
  for (unsigned y = 0; y < size.height; ++y) {
    for (unsigned x = 0; x < size.width; ++x) {
      const double light = peak * columns[x] * rows[y] * kFilter[y & 1][x & 1];
      const auto noise = static_cast<unsigned>(random() % kNoise);
      const unsigned sample = (static_cast<unsigned>(light) + noise) / factor;
      const size_t i = size_t{y} * size.width + x;
      frame.samples16[i] = static_cast<uint16_t>(sample >> (kBits - significantBits));
      frame.samples8[i] = static_cast<uint8_t>(sample >> (kBits - 8));
    }
  }
  return frame;
}

}  // namespace vistrel::core::bench
