#include "apps/tools/guess/row_profile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace vistrel::app {
namespace {

constexpr size_t kMaxRows = 65536, kLikeliest = 12, kComparedRows = 200;
constexpr uint32_t kMiddle = 128;

const std::vector<float> kLogarithms = [] {
  std::vector<float> lengths(65536);
  for (size_t i = 0; i < lengths.size(); ++i) lengths[i] = std::log2(1.0f + static_cast<float>(i));
  return lengths;
}();

// How much each row differs from the row two above, and how bright it is, in the middle.
struct RowStatistics {
  std::vector<double> changes, levels;
};

RowStatistics statisticsOf(RowReader& reader, uint32_t width) {
  const uint32_t count = std::min(width, kMiddle), first = (width - count) / 2;
  std::array<std::vector<uint16_t>, 3> ring;
  for (auto& row : ring) row.resize(count);
  std::vector<double> changes(std::min(reader.rows(), kMaxRows)), levels(changes.size());
  for (size_t y = 0; y < changes.size(); ++y) {
    auto& own = ring[y % 3];
    const auto& above = ring[(y + 1) % 3];
    reader.read(y, first, count, own.data());
    for (const uint16_t sample : own) levels[y] += kLogarithms[sample];
    if (y < 2) continue;
    for (uint32_t x = 0; x < count; ++x)
      changes[y] += kLogarithms[static_cast<size_t>(std::abs(own[x] - above[x]))];
    changes[y] /= count;
  }
  return {changes, levels};
}

double medianAround(const std::vector<double>& values, size_t at) {
  constexpr size_t kReach = 8;
  const size_t begin = at < kReach ? 0 : at - kReach,
               end = std::min(values.size(), at + kReach + 1);
  std::vector<double> near(values.begin() + static_cast<ptrdiff_t>(begin),
                           values.begin() + static_cast<ptrdiff_t>(end));
  const auto middle = near.begin() + static_cast<ptrdiff_t>(near.size() / 2);
  std::ranges::nth_element(near, middle);
  return *middle;
}

}  // namespace

// The first two rows of a frame have another frame's rows above. Row 1 has none that could differ.
RowProfile::RowProfile(RowReader& reader, uint32_t width) {
  RowStatistics statistics = statisticsOf(reader, width);
  const auto& changes = statistics.changes;
  levels_ = std::move(statistics.levels);
  jumps_.resize(changes.size());
  for (size_t y = 2; y + 1 < changes.size(); ++y)
    jumps_[y] = std::min(changes[y], changes[y + 1]) - medianAround(changes, y);
  if (changes.size() > 3) jumps_[1] = changes[2] - std::max(changes[3], medianAround(changes, 2));
  sorted_ = jumps_;
  std::ranges::sort(sorted_);
}

double RowProfile::strengthOfSeam(size_t row) const {
  if (row >= jumps_.size() || sorted_.back() <= 0) return 0;
  return std::max(0.0, jumps_[row] / sorted_.back());
}

double RowProfile::distanceOfFrames(size_t first, size_t height) const {
  const auto distance = [&](size_t rows) {
    double sum = 0;
    size_t count = 1;
    const size_t step = levels_.size() / kComparedRows + 1;
    for (size_t y = first; y + rows < levels_.size(); y += step, ++count)
      sum += std::abs(levels_[y] - levels_[y + rows]);
    return sum / static_cast<double>(count);
  };
  double others = 0;
  for (const size_t eighths : {3, 4, 5}) others += distance(height * eighths / 8) / 3;
  return others > 0 ? distance(height) / others : 1;
}

std::vector<size_t> RowProfile::seams() const {
  std::vector<size_t> rows(jumps_.size());
  std::iota(rows.begin(), rows.end(), size_t{0});
  const size_t count = std::min(rows.size(), kLikeliest);
  std::partial_sort(rows.begin(), rows.begin() + static_cast<ptrdiff_t>(count), rows.end(),
                    [this](size_t a, size_t b) { return jumps_[a] > jumps_[b]; });
  rows.resize(count);
  return rows;
}

double RowProfile::rankOfSeam(size_t row) const {
  if (row >= jumps_.size() || sorted_.size() < 16) return 0.5;
  const auto below = std::ranges::lower_bound(sorted_, jumps_[row]);
  return static_cast<double>(below - sorted_.begin()) / static_cast<double>(sorted_.size());
}

}  // namespace vistrel::app
