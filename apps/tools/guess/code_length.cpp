#include "apps/tools/guess/code_length.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace vistrel::app {
namespace {

// A constant; two neighbours at the left; three in the row above, three of the same colour two
// above.
constexpr size_t kTerms = 9;

struct Place {
  std::array<float, kTerms> terms;
  float level;  // of the sample, compressed as the terms are
  uint16_t sample;
};

using Site = std::vector<Place>;  // places whose row and column have the same parities
using Sites = std::array<Site, 4>;
using Weights = std::array<double, kTerms>;

constexpr uint32_t kSegment = 64;  // samples of a row that are read at once

// A few rows of samples above one another, at the same columns.
struct Patch {
  size_t y;  // of the last row
  uint32_t x, count;
  std::array<std::vector<uint16_t>, 3> rows;
};

std::vector<Patch> patchesOf(RowReader& reader, uint32_t width, size_t samples) {
  const uint32_t count = std::min(width, kSegment);
  const size_t patches = std::max<size_t>(4, samples / count);
  std::vector<Patch> all;
  double place = 0.5;
  for (size_t k = 0; k < patches; ++k) {
    place += 0.6180339887 - (place > 0.3819660113 ? 1 : 0);
    const double row = place * reader.span();
    const auto y = std::max<size_t>(2, static_cast<size_t>(row));
    if (y >= reader.rows()) continue;
    const auto x = static_cast<uint32_t>((row - std::floor(row)) * width);
    Patch patch{y, std::min(x, width - count), count, {}};
    for (size_t i = 0; i < 3; ++i) {
      patch.rows[i].resize(count);
      reader.read(y - 2 + i, patch.x, count, patch.rows[i].data());
    }
    all.push_back(std::move(patch));
  }
  return all;
}

float medianOf(std::vector<float>& values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Compresses levels that are far from the usual ones: stars, and pads that are full of ones.
class Companding {
 public:
  explicit Companding(const std::vector<Patch>& patches) {
    std::vector<float> levels;
    for (const Patch& p : patches)
      for (uint32_t x = 0; x < p.count; x += 2) levels.push_back(p.rows[2][x]);
    centre_ = medianOf(levels);
    for (float& level : levels) level = std::abs(level - centre_);
    width_ = 4 * medianOf(levels) + 1;
  }

  float compressed(float level) const {
    const float d = (level - centre_) / width_;
    return std::copysign(std::log1p(std::abs(d)), d);
  }
  double expanded(double level) const {
    const double d = std::copysign(std::expm1(std::min(std::abs(level), 20.0)), level);
    return std::clamp(centre_ + width_ * d, 0.0, 65535.0);
  }

 private:
  float centre_, width_;
};

Sites sitesOf(const std::vector<Patch>& patches, const Companding& companding) {
  Sites sites;
  std::array<std::array<float, kSegment>, 3> levels;
  for (const Patch& p : patches) {
    for (size_t i = 0; i < 3; ++i)
      std::ranges::transform(p.rows[i], levels[i].begin(),
                             [&](uint16_t s) { return companding.compressed(s); });
    const auto& [two, one, own] = levels;
    for (uint32_t x = 2; x + 2 < p.count; ++x)
      sites[(p.y & 1) * 2 + ((p.x + x) & 1)].push_back(
          {{1, own[x - 1], own[x - 2], one[x], one[x - 1], one[x + 1], two[x], two[x - 2],
            two[x + 2]},
           own[x],
           p.rows[2][x]});
  }
  return sites;
}

double predictedBy(const Weights& weights, const Place& p) {
  double level = 0;
  for (size_t i = 0; i < kTerms; ++i) level += weights[i] * p.terms[i];
  return level;
}

// The weights that minimise the squared errors, by elimination in the normal equations.
class LeastSquares {
 public:
  void add(const Place& p, double importance) {
    for (size_t i = 0; i < kTerms; ++i) {
      const double term = p.terms[i] * importance;
      for (size_t j = i; j < kTerms; ++j) m_[i][j] += term * p.terms[j];
      m_[i][kTerms] += term * p.level;
    }
  }

  Weights solved() {
    for (size_t i = 0; i < kTerms; ++i) {
      m_[i][i] = m_[i][i] * (1 + 1e-9) + 1e-6;
      for (size_t j = 0; j < i; ++j) m_[i][j] = m_[j][i];
    }
    for (size_t i = 0; i < kTerms; ++i)  // positive definite: no pivots
      for (size_t k = 0; k < kTerms; ++k) {
        if (k == i) continue;
        const double factor = m_[k][i] / m_[i][i];
        for (size_t j = i; j <= kTerms; ++j) m_[k][j] -= factor * m_[i][j];
      }
    Weights weights{};
    for (size_t i = 0; i < kTerms; ++i) weights[i] = m_[i][kTerms] / m_[i][i];
    return weights;
  }

 private:
  std::array<std::array<double, kTerms + 1>, kTerms> m_{};
};

// A second time with less importance for large errors: a few edges would outweigh all smooth areas.
Weights weightsOf(const Site& site) {
  LeastSquares first, second;
  for (const Place& p : site) first.add(p, 1);
  const Weights weights = first.solved();
  std::vector<float> errors;
  for (const Place& p : site)
    errors.push_back(static_cast<float>(std::abs(p.level - predictedBy(weights, p))));
  std::vector<float> sorted = errors;
  const double usual = medianOf(sorted) + 1e-4;
  for (size_t i = 0; i < site.size(); ++i)
    second.add(site[i], 1 / (1 + errors[i] * errors[i] / (usual * usual)));
  return second.solved();
}

// The mean bits of numbers: the entropy of their lengths, and the bits that these leave open.
class NumberCode {
 public:
  void add(long number) {
    ++counts_[static_cast<size_t>(std::bit_width(static_cast<unsigned long>(std::labs(number))))];
    ++all_;
  }

  double bits() const {
    double sum = 0;
    for (size_t length = 0; length < counts_.size(); ++length)
      if (counts_[length] > 0)
        sum += counts_[length] * (std::log2(all_ / counts_[length]) + static_cast<double>(length));
    return all_ > 0 ? sum / all_ : 0;
  }

 private:
  std::array<double, 40> counts_{};
  double all_ = 0;
};

// In units of the lowest bit that is in use.
double bitsOf(const Sites& sites, const Companding& companding, double unit) {
  NumberCode code;
  for (const Site& site : sites) {
    const Weights weights = weightsOf(site);
    for (const Place& p : site) {
      const double level = predictedBy(weights, p);
      code.add(std::lround((p.sample - companding.expanded(level)) / unit));
    }
  }
  return code.bits();
}

// The largest power of two that nearly all samples are multiples of; some are those of a header.
struct Unit {
  double size;
  double bits;  // that tell the other samples, the mean of all
};

Unit unitOf(const Sites& sites) {
  std::array<double, 17> counts{};  // by the lowest bit that is set
  double all = 0;
  for (const Site& site : sites)
    for (const Place& p : site) {
      ++counts[static_cast<size_t>(std::countr_zero(p.sample | 65536u))];
      ++all;
    }
  double others = 0;
  size_t shift = 0;
  while (shift < 15 && (others + counts[shift]) * 20 <= all) others += counts[shift++];
  const double share = others / std::max(all, 1.0);
  if (share <= 0) return {std::ldexp(1, static_cast<int>(shift)), 0};
  const double choice = -share * std::log2(share) - (1 - share) * std::log2(1 - share);
  return {std::ldexp(1, static_cast<int>(shift)), choice + share * static_cast<double>(shift)};
}

}  // namespace

CodeLength codeLengthOf(RowReader& reader, uint32_t width, size_t samples) {
  const std::vector<Patch> patches = patchesOf(reader, width, samples);
  const Companding companding(patches);
  const Sites sites = sitesOf(patches, companding);
  const Unit unit = unitOf(sites);
  return {bitsOf(sites, companding, unit.size) + unit.bits, unit.size};
}

}  // namespace vistrel::app
