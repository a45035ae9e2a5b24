#include "apps/input/camera_colour.h"

#include <algorithm>
#include <cstdlib>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr double kMatrixOne = 4096;
constexpr double kLargestGain = 16;  // of gains; coefficients are smaller
constexpr int kMaxPasses = 30;
constexpr double kConverged = 1e-7;

// The part of the first calibration.
double weightAt(const CameraMetadata& m, double temperature) {
  const Calibration &first = m.calibrations.front(), &last = m.calibrations.back();
  if (!first.temperature || !last.temperature || *first.temperature == *last.temperature) return 1;
  const double from = 1 / *last.temperature, to = 1 / *first.temperature;
  return std::clamp((1 / temperature - from) / (to - from), 0.0, 1.0);
}

Matrix3 mean(const Matrix3& a, const Matrix3& b, double weightOfA) {
  Matrix3 result{};
  for (size_t i = 0; i < result.size(); ++i) result[i] = weightOfA * a[i] + (1 - weightOfA) * b[i];
  return result;
}

// From XYZ to the colours of this camera, under light of this temperature.
Matrix3 fromXyzAt(const CameraMetadata& m, double temperature) {
  const Calibration &first = m.calibrations.front(), &last = m.calibrations.back();
  const double weight = weightAt(m, temperature);
  const Matrix3 model = mean(first.fromXyz, last.fromXyz, weight);
  const Matrix3 individual = mean(first.individual, last.individual, weight);
  const Matrix3 balance = diagonal(m.analogBalance.value_or(Vector3{1, 1, 1}));
  return product(balance, product(individual, model));
}

// The light under which the camera sees a white object as its neutral.
std::optional<Chromaticity> lightOf(const CameraMetadata& m) {
  if (!m.neutral) return m.light.value_or(kD65);
  Chromaticity light = kD50;
  for (int pass = 0; pass < kMaxPasses; ++pass) {
    const auto toXyz = inverse(fromXyzAt(m, temperatureOf(light)));
    if (!toXyz) return {};
    const auto next = chromaticityOf(product(*toXyz, *m.neutral));
    if (!next) return {};
    const double dx = next->x - light.x, dy = next->y - light.y;
    light = *next;
    if (dx * dx + dy * dy < kConverged * kConverged) break;
  }
  return light;
}

std::array<uint32_t, 3> gainsOf(const Vector3& neutral) {
  const double largest = std::ranges::max(neutral);
  std::array<uint32_t, 3> gains{};
  for (size_t i = 0; i < 3; ++i)
    gains[i] = static_cast<uint32_t>(kMatrixOne * largest / neutral[i] + 0.5);
  return gains;
}

int32_t rounded(double v) { return static_cast<int32_t>(v < 0 ? v - 0.5 : v + 0.5); }

// Divides each row by its sum and rounds it; the largest coefficient takes what is left to 1.
std::optional<std::array<int32_t, 9>> normalised(const Matrix3& m) {
  std::array<int32_t, 9> result{};
  for (size_t i = 0; i < 9; i += 3) {
    const double sum = m[i] + m[i + 1] + m[i + 2];
    int32_t rest = static_cast<int32_t>(kMatrixOne), size = 0;
    for (size_t j = i; j < i + 3; ++j) {
      const double v = m[j] / sum;
      if (!(sum > 0 && v > -kLargestGain && v < kLargestGain)) return {};
      rest -= result[j] = rounded(kMatrixOne * v);
    }
    *std::max_element(&result[i], &result[i] + 3) += rest;
    for (size_t j = i; j < i + 3; ++j) size += std::abs(result[j]);
    if (size > VISTREL_MATRIX_MAX) return {};
  }
  return result;
}

bool isBalanced(const Vector3& neutral) {
  const double least = std::ranges::min(neutral);
  return least > 0 && std::ranges::max(neutral) <= kLargestGain * least;
}

// Sets the matrix, and the gains if the file specifies the light in place of the neutral.
void setMatrix(const CameraMetadata& m, CameraColour& colour) {
  const auto light = lightOf(m);
  if (!light) return void(colour.fault = "no light gives the neutral");
  const double temperature = temperatureOf(*light);
  const Matrix3 fromXyz = fromXyzAt(m, temperature);
  const auto toXyz = inverse(fromXyz);
  const auto adapted = adaptation(*light, kD65);
  const Vector3 neutral = m.neutral.value_or(product(fromXyz, xyzOf(*light)));
  if (!toXyz || !adapted || !isBalanced(neutral))
    return void(colour.fault = "the light is beyond what the matrices describe");
  const Matrix3 toSrgb = product(srgbFromXyz(), product(*adapted, *toXyz));
  colour.matrix = normalised(product(toSrgb, diagonal(neutral)));
  if (!colour.matrix)
    return void(colour.fault = "the coefficients of a row would add up to 8 or more");
  if (m.neutral || m.light) colour.temperature = temperature;
  if (!m.neutral && m.light) colour.gains = gainsOf(neutral);
}

}  // namespace

CameraColour cameraColour(const CameraMetadata& metadata) {
  CameraColour colour;
  if (metadata.neutral) colour.gains = gainsOf(*metadata.neutral);
  if (!metadata.calibrations.empty()) setMatrix(metadata, colour);
  return colour;
}

}  // namespace vistrel::app
