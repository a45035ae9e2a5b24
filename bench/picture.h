// A finished picture in either side's layout, and whether two of them show the same.
#pragma once

#include <array>
#include <cstdint>

namespace vistrel::core::bench {

struct Layout {
  unsigned channels;
  unsigned sampleBytes;         // 1 or 2
  std::array<unsigned, 3> rgb;  // where red, green and blue stand in a pixel
};

constexpr Layout kMono8{1, 1, {0, 0, 0}}, kMono16{1, 2, {0, 0, 0}};
constexpr Layout kBgr24{3, 1, {2, 1, 0}}, kRgb24{3, 1, {0, 1, 2}};
constexpr Layout kBgr48{3, 2, {2, 1, 0}}, kRgb48{3, 2, {0, 1, 2}};
constexpr Layout kArgb32{4, 1, {1, 2, 3}}, kBgra32{4, 1, {2, 1, 0}};

struct Picture {
  const void* data;
  unsigned width, height;
  Layout layout;
  unsigned bits;  // full scale of a sample
};

// The largest difference, in codes of 8 bits, between a's and gain times b's mean of a channel
// over one of 8 x 8 tiles.
double largestDifference(const Picture& a, const Picture& b, double gain);

}  // namespace vistrel::core::bench
