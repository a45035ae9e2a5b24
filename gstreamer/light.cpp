#include "gstreamer/light.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vistrel::gstreamer {
namespace {

// So many measurements tell how much they scatter. Later ones count by a part of that memory.
constexpr size_t kFew = 16;
constexpr double kMemory = 32;

// What noise explains: so many standard deviations, at least a little more than two steps in which
// gains are found.
constexpr double kDeviations = 5, kLeast = 0.05;

// So many measurements in a row prove a change.
constexpr size_t kProof = 4;

// Successive differences have twice the variance of measurements, even while light fades.
double varianceOf(const Light::Logarithms& a, const Light::Logarithms& b) {
  const double difference = largestDifference(a, b);
  return difference * difference / 2;
}

// Without the largest difference, which may be a change of the light.
double varianceOf(const std::vector<Light::Logarithms>& all) {
  double sum = 0, largest = 0;
  for (size_t i = 1; i < all.size(); ++i) {
    const double variance = varianceOf(all[i - 1], all[i]);
    sum += variance;
    largest = std::max(largest, variance);
  }
  return (sum - largest) / static_cast<double>(all.size() - 2);
}

Light::Logarithms medianOf(const std::vector<Light::Logarithms>& all) {
  Light::Logarithms median{};
  for (size_t i = 0; i < median.size(); ++i) {
    std::vector<double> values;
    for (const Light::Logarithms& one : all) values.push_back(one[i]);
    std::ranges::sort(values);
    median[i] = (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
  }
  return median;
}

}  // namespace

double largestDifference(const Light::Logarithms& a, const Light::Logarithms& b) {
  double largest = 0;
  for (size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::abs(a[i] - b[i]));
  return largest;
}

bool Light::isUnsure() const { return first_.size() < kFew || !suspects_.empty(); }

bool Light::isFar(const Logarithms& found) const {
  const double noise = std::max(kLeast, kDeviations * std::sqrt(variance_));
  return largestDifference(found, mean_) > noise;
}

bool Light::isBesideSuspects(const Logarithms& found) const {
  if (suspects_.empty()) return true;
  double product = 0;
  for (size_t i = 0; i < found.size(); ++i)
    product += (found[i] - mean_[i]) * (suspects_.back()[i] - mean_[i]);
  return product > 0;
}

bool Light::begin(const Logarithms& found) {
  first_.push_back(found);
  last_ = found;
  mean_ = medianOf(first_);
  if (first_.size() < kFew) return false;
  variance_ = varianceOf(first_);
  return isFar(first_.front());
}

void Light::absorb(const Logarithms& found) {
  variance_ += (varianceOf(found, last_) - variance_) / kMemory;
  for (size_t i = 0; i < found.size(); ++i) mean_[i] += (found[i] - mean_[i]) / kMemory;
  last_ = found;
}

void Light::absorbSuspects() {
  for (const Logarithms& suspect : std::exchange(suspects_, {})) absorb(suspect);
}

bool Light::take(const Logarithms& found) {
  if (first_.size() < kFew) return begin(found);
  const bool suspicious = isFar(found);
  if (!suspicious || !isBesideSuspects(found)) absorbSuspects();
  if (!suspicious) return absorb(found), false;
  suspects_.push_back(found);
  if (suspects_.size() < kProof) return false;
  first_.clear();
  for (const Logarithms& suspect : std::exchange(suspects_, {})) begin(suspect);
  return true;
}

}  // namespace vistrel::gstreamer
