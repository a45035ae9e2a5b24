#include "bench/picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace vistrel::core::bench {

namespace {

constexpr unsigned kTiles = 8;
constexpr unsigned kMargin = 3;  // ignored: peers differ there or leave it black
using Means = std::vector<std::array<double, 3>>;

template <class T>
Means tileMeans(const Picture& picture) {
  Means sums(kTiles * kTiles);
  std::vector<double> counts(kTiles * kTiles);
  const auto& layout = picture.layout;
  for (unsigned y = kMargin; y < picture.height - kMargin; ++y) {
    const T* row =
        static_cast<const T*>(picture.data) + size_t{y} * picture.width * layout.channels;
    for (unsigned x = kMargin; x < picture.width - kMargin; ++x) {
      const T* pixel = row + x * layout.channels;
      const unsigned tile = y * kTiles / picture.height * kTiles + x * kTiles / picture.width;
      for (unsigned c = 0; c < 3; ++c) sums[tile][c] += pixel[layout.rgb[c]];
      ++counts[tile];
    }
  }
  const double scale = std::exp2(8.0 - picture.bits);
  for (unsigned tile = 0; tile < sums.size(); ++tile)
    for (double& sum : sums[tile]) sum *= scale / counts[tile];
  return sums;
}

Means means(const Picture& picture) {
  return picture.layout.sampleBytes == 1 ? tileMeans<uint8_t>(picture)
                                         : tileMeans<uint16_t>(picture);
}

}  // namespace

double largestDifference(const Picture& a, const Picture& b, double gain) {
  const Means ours = means(a), theirs = means(b);
  double largest = 0;
  for (unsigned tile = 0; tile < ours.size(); ++tile)
    for (unsigned c = 0; c < 3; ++c)
      largest = std::max(largest, std::abs(ours[tile][c] - gain * theirs[tile][c]));
  return largest;
}

}  // namespace vistrel::core::bench
