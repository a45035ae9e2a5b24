#include "apps/tools/guess/columns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace vistrel::app {
namespace {

constexpr size_t kRowsCompared = 192;  // some rows suffice

// The length of the difference of two bytes, 255 being next to 0.
const std::array<float, 256> kLengths = [] {
  std::array<float, 256> lengths;
  for (int i = 0; i < 256; ++i)
    lengths[static_cast<size_t>(i)] = std::log2(1.0f + static_cast<float>(std::min(i, 256 - i)));
  return lengths;
}();
const double kNoise = std::accumulate(kLengths.begin(), kLengths.end(), 0.0) / 256;

// The mean length at each place of a period, of the differences from bytes `distance` before.
std::vector<double> differencesOf(const std::vector<uint8_t>& bytes, size_t period,
                                  size_t distance) {
  const size_t rows = bytes.size() / period, step = std::max<size_t>(1, rows / kRowsCompared) | 1;
  std::vector<double> means(period);
  size_t count = 0;
  for (size_t y = 2; y < rows; y += step, ++count)
    for (size_t at = y * period, x = 0; x < period; ++x, ++at)
      means[x] += kLengths[static_cast<uint8_t>(bytes[at] - bytes[at - distance])];
  for (double& mean : means) mean /= static_cast<double>(std::max<size_t>(1, count));
  return means;
}

// The run of the largest sum, in values on a circle.
Padding largestRun(const std::vector<double>& values, bool noise) {
  const size_t size = values.size();
  Padding best{0, 0, noise};
  double sum = 0, largest = 0;
  for (size_t i = 0, begin = 0; i < 2 * size; ++i) {
    sum += values[i % size];
    if (sum <= 0 || i - begin >= size) sum = 0, begin = i + 1;
    if (sum > largest) largest = sum, best = {begin % size, i + 1 - begin, noise};
  }
  return best;
}

// Only bytes of the same value, if most have one: samples may never change either.
Padding trimmed(Padding p, const std::vector<uint8_t>& bytes, size_t period) {
  const size_t row = bytes.size() / period / 2 * period;
  const auto at = [&](size_t i) { return bytes[row + (p.begin + i) % period]; };
  const uint8_t usual = at(p.count / 2);
  size_t same = 0;
  for (size_t i = 0; i < p.count; ++i) same += at(i) == usual;
  if (same * 10 < p.count * 9) return p;
  while (at(p.count - 1) != usual) --p.count;
  while (at(0) != usual) p = {(p.begin + 1) % period, p.count - 1, p.noise};
  return p;
}

}  // namespace

std::vector<Padding> paddingsOf(const std::vector<uint8_t>& bytes, size_t period) {
  const std::vector<double> changes = differencesOf(bytes, period, 2 * period);
  const double usual =
      std::accumulate(changes.begin(), changes.end(), 0.0) / static_cast<double>(period);
  std::vector<double> constant(period), noise(period);
  for (size_t x = 0; x < period; ++x) {
    constant[x] = changes[x] < 0.1 ? 1 : -1000;
    noise[x] = changes[x] - (usual + kNoise) / 2;
  }
  std::vector<Padding> paddings{largestRun(constant, false), largestRun(noise, true)};
  if (paddings[0].count) paddings[0] = trimmed(paddings[0], bytes, period);
  std::erase_if(paddings, [period](const Padding& p) {
    return p.count < (p.noise ? 4 : 2) || p.count > period / 4 * 3;
  });
  return paddings;
}

Seams::Seams(const std::vector<uint8_t>& bytes, size_t period, size_t group) : steps_(period) {
  const std::vector<double> differences = differencesOf(bytes, period, std::min(group, period));
  for (size_t x = 0; x < period; ++x)
    for (size_t k = 0; k < group; ++k) steps_[x] += differences[(x + k) % period];
  sorted_ = steps_;
  std::ranges::sort(sorted_);
}

double Seams::rankOf(size_t place) const {
  const auto below = std::ranges::lower_bound(sorted_, steps_[place % steps_.size()]);
  return static_cast<double>(below - sorted_.begin()) / static_cast<double>(sorted_.size());
}

}  // namespace vistrel::app
