// A finished picture in either side's layout, and the comparison of two pictures.
#pragma once

#include <array>
#include <cstdint>

namespace vistrel::core::bench {

struct Layout {
  unsigned channels;
  unsigned sampleBytes;         // 1 or 2
  std::array<unsigned, 3> rgb;  // index of red, green and blue in a pixel
};

constexpr Layout kMono8{1, 1, {0, 0, 0}}, kMono16{1, 2, {0, 0, 0}};
constexpr Layout kBgr24{3, 1, {2, 1, 0}}, kRgb24{3, 1, {0, 1, 2}};
constexpr Layout kBgr48{3, 2, {2, 1, 0}}, kRgb48{3, 2, {0, 1, 2}};
constexpr Layout kArgb32{4, 1, {1, 2, 3}}, kBgra32{4, 1, {2, 1, 0}}, kRgba32{4, 1, {0, 1, 2}};

struct Picture {
  const void* data;
  unsigned width, height;
  Layout layout;
  unsigned bits;  // full scale of a sample
};

// Compares the means of each channel over 8 x 8 tiles: the largest difference between a's means and
// b's means times gain, in 8-bit codes.
double largestDifference(const Picture& a, const Picture& b, double gain);

}  // namespace vistrel::core::bench
