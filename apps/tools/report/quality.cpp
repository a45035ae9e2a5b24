#include "apps/tools/report/quality.h"

#include <cmath>

namespace vistrel::app {
namespace {

constexpr double kPeak = 255;

std::array<float, kWindow> gaussian() {
  constexpr double kDeviation = 1.5;
  std::array<double, kWindow> weights;
  double sum = 0;
  for (uint32_t i = 0; i < kWindow; ++i) {
    const double x = (i - (kWindow - 1) / 2.0) / kDeviation;
    sum += weights[i] = std::exp(-x * x / 2);
  }
  std::array<float, kWindow> normed;
  for (uint32_t i = 0; i < kWindow; ++i) normed[i] = static_cast<float>(weights[i] / sum);
  return normed;
}

// to[i] = sum over k of weights[k] * from[i + k * step].
void convolve(const float* from, size_t step, size_t n, float* to) {
  static const std::array<float, kWindow> weights = gaussian();
  for (size_t i = 0; i < n; ++i) to[i] = 0;
  for (size_t k = 0; k < kWindow; ++k)
    for (size_t i = 0; i < n; ++i) to[i] += weights[k] * from[i + k * step];
}

std::vector<float> product(const std::vector<float>& a, const std::vector<float>& b) {
  std::vector<float> p(a.size());
  for (size_t i = 0; i < p.size(); ++i) p[i] = a[i] * b[i];
  return p;
}

double squaredError(const std::vector<float>& a, const std::vector<float>& b) {
  double sum = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    const double d = double{a[i]} - b[i];
    sum += d * d;
  }
  return sum;
}

}  // namespace

Evaluator::Evaluator(const Image& reference)
    : width_(reference.layout.width - 2 * kBorder), height_(reference.layout.height - 2 * kBorder) {
  for (uint32_t c = 0; c < 3; ++c) {
    Plane& plane = reference_[c];
    plane.samples = planeOf(reference, c);
    plane.mean = blurred(plane.samples);
    plane.meanOfSquares = blurred(product(plane.samples, plane.samples));
  }
}

Quality Evaluator::of(const Image& picture) const {
  double error = 0, similarity = 0;
  for (uint32_t c = 0; c < 3; ++c) {
    const std::vector<float> plane = planeOf(picture, c);
    error += squaredError(reference_[c].samples, plane);
    similarity += ssim(reference_[c], plane);
  }
  const double mean = error / (3.0 * width_ * height_);
  return {10 * std::log10(kPeak * kPeak / mean), similarity / 3};
}

std::vector<float> Evaluator::planeOf(const Image& image, uint32_t channel) const {
  std::vector<float> plane;
  plane.reserve(size_t{width_} * height_);
  for (uint32_t y = kBorder; y < kBorder + height_; ++y) {
    const uint8_t* row = &image.pixels[y * image.layout.row_bytes];
    for (uint32_t x = kBorder; x < kBorder + width_; ++x) plane.push_back(row[3 * x + channel]);
  }
  return plane;
}

// Only positions where the whole window lies inside the plane.
std::vector<float> Evaluator::blurred(const std::vector<float>& plane) const {
  const size_t width = width_ - kWindow + 1, height = height_ - kWindow + 1;
  std::vector<float> alongRows(width * height_), result(width * height);
  for (size_t y = 0; y < height_; ++y)
    convolve(&plane[y * width_], 1, width, &alongRows[y * width]);
  for (size_t y = 0; y < height; ++y)
    convolve(&alongRows[y * width], width, width, &result[y * width]);
  return result;
}

double Evaluator::ssim(const Plane& reference, const std::vector<float>& picture) const {
  constexpr double kC1 = (0.01 * kPeak) * (0.01 * kPeak), kC2 = (0.03 * kPeak) * (0.03 * kPeak);
  const std::vector<float> mean = blurred(picture);
  const std::vector<float> meanOfSquares = blurred(product(picture, picture));
  const std::vector<float> meanOfProducts = blurred(product(reference.samples, picture));
  double sum = 0;
  for (size_t i = 0; i < mean.size(); ++i) {
    const double a = reference.mean[i], b = mean[i];
    const double variances = reference.meanOfSquares[i] - a * a + meanOfSquares[i] - b * b;
    const double covariance = meanOfProducts[i] - a * b;
    sum += (2 * a * b + kC1) * (2 * covariance + kC2) / ((a * a + b * b + kC1) * (variances + kC2));
  }
  return sum / static_cast<double>(mean.size());
}

}  // namespace vistrel::app
