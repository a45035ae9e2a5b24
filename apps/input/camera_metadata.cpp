#include "apps/input/camera_metadata.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr double kLargestSample = 65535;
constexpr double kMostStops = 16;

using Warnings = std::vector<std::string>;

template <class T>
void drop(std::optional<T>& value, const std::string& cause, Warnings& warnings) {
  value.reset();
  warnings.push_back(cause + "; not used");
}

void checkLevels(CameraMetadata& m, Warnings& warnings) {
  const auto isLevel = [](double level) { return level >= 0 && level <= kLargestSample; };
  if (m.black && !std::ranges::all_of(*m.black, isLevel))
    drop(m.black, fmt::format("black level {}: 0 to 65535 are allowed", fmt::join(*m.black, " ")),
         warnings);
  if (m.white && !(*m.white >= 1 && isLevel(*m.white)))
    drop(m.white, fmt::format("white level {}: 1 to 65535 are allowed", *m.white), warnings);
  if (!m.black || !m.white || std::ranges::max(*m.black) < *m.white) return;
  drop(
      m.black,
      fmt::format("black level {} is not below white level {}", fmt::join(*m.black, " "), *m.white),
      warnings);
  m.white.reset();
}

bool isPositive(const Vector3& v) {
  return std::ranges::all_of(v, [](double c) { return c > 0 && std::isfinite(c); });
}

void checkNeutral(CameraMetadata& m, Warnings& warnings) {
  constexpr double kMostGain = VISTREL_GAIN_MAX / VISTREL_GAIN_ONE;
  if (m.neutral && (!isPositive(*m.neutral) ||
                    std::ranges::max(*m.neutral) > kMostGain * std::ranges::min(*m.neutral)))
    drop(m.neutral,
         fmt::format("neutral {}: its parts must be positive, none more than {} times another",
                     fmt::join(*m.neutral, " "), kMostGain),
         warnings);
  if (m.light && !(m.light->x > 0 && m.light->y > 0 && m.light->x + m.light->y < 1))
    drop(m.light, fmt::format("white x {}, y {}: no light has it", m.light->x, m.light->y),
         warnings);
}

void checkMatrices(CameraMetadata& m, Warnings& warnings) {
  if (m.analogBalance && !isPositive(*m.analogBalance))
    drop(m.analogBalance,
         fmt::format("analog balance {}: its parts must be positive",
                     fmt::join(*m.analogBalance, " ")),
         warnings);
  std::erase_if(m.calibrations, [&warnings](const Calibration& c) {
    const bool isSingular = !inverse(product(c.individual, c.fromXyz));
    if (isSingular)
      warnings.push_back(
          fmt::format("colour matrix {}: it has no inverse; not used", fmt::join(c.fromXyz, " ")));
    return isSingular;
  });
}

void checkGeometry(CameraMetadata& m, uint32_t width, uint32_t height, Warnings& warnings) {
  if (m.orientation && (*m.orientation < 1 || *m.orientation > 8))
    drop(m.orientation, fmt::format("orientation {}: 1 to 8 are allowed", *m.orientation),
         warnings);
  if (!m.crop) return;
  const auto [x, y, w, h] = *m.crop;
  if (!w || !h || w > width || h > height || x > width - w || y > height - h)
    drop(m.crop, fmt::format("crop {}x{}+{}+{}: it exceeds the frame, or is empty", w, h, x, y),
         warnings);
}

void dropUnknown(std::optional<double>& value) {
  if (value && !(*value > 0 && std::isfinite(*value))) value.reset();
}

}  // namespace

void dropInvalid(CameraMetadata& m, uint32_t width, uint32_t height, Warnings& warnings) {
  checkLevels(m, warnings);
  checkNeutral(m, warnings);
  checkMatrices(m, warnings);
  checkGeometry(m, width, height, warnings);
  if (m.baselineExposure && !(std::abs(*m.baselineExposure) <= kMostStops))
    drop(m.baselineExposure,
         fmt::format("baseline exposure {}: at most {} stops are allowed", *m.baselineExposure,
                     kMostStops),
         warnings);
  if (m.gain && !std::isfinite(*m.gain)) m.gain.reset();
  for (auto* value : {&m.exposureTime, &m.iso, &m.aperture, &m.focalLength}) dropUnknown(*value);
}

void forgetAssumptions(CameraMetadata& m, const std::string& software, uint32_t light) {
  if (light != 0 || !software.starts_with("vistrel ")) return;
  m.calibrations.clear();
  if (m.black && std::ranges::max(*m.black) == 0) m.black.reset();
}

std::array<double, 4> blackOfPattern(std::span<const double> pattern, uint32_t rows,
                                     uint32_t columns, double delta) {
  std::array<double, 4> black{};
  for (uint32_t y = 0; y < 2 * rows; ++y)
    for (uint32_t x = 0; x < 2 * columns; ++x)
      black[2 * (y % 2) + x % 2] += pattern[y % rows * columns + x % columns];
  for (double& level : black) level = level / (double{1} * rows * columns) + delta;
  return black;
}

std::optional<std::string> plainText(const std::string& text) {
  std::string plain = text;
  std::erase_if(plain, [](unsigned char c) { return c < ' ' || c == 0x7F; });
  const size_t begin = plain.find_first_not_of(' ');
  if (begin == std::string::npos) return {};
  return plain.substr(begin, plain.find_last_not_of(' ') + 1 - begin);
}

std::optional<std::string> plainDate(const std::string& text) {
  const std::string form = "0000-00-00T00:00:00";
  if (text.size() < form.size() || text.starts_with("0000")) return {};
  std::string date = form;
  for (size_t i = 0; i < form.size(); ++i) {
    const bool isDigit = std::isdigit(static_cast<unsigned char>(text[i]));
    if (isDigit != (form[i] == '0')) return {};
    if (isDigit) date[i] = text[i];
  }
  return date;
}

}  // namespace vistrel::app
