#include "try/engine/decoded.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "apps/names/phase_names.h"

namespace vistrel::page {
namespace {

using Tags = nlohmann::json;
using app::CameraMetadata;
using app::Description;

// Numbers of a tag; empty if it is missing.
std::vector<double> numbers(const Tags& tags, const char* name) {
  const auto found = tags.find(name);
  return found == tags.end() ? std::vector<double>{} : found->get<std::vector<double>>();
}

template <size_t N>
std::optional<std::array<double, N>> array(const Tags& tags, const char* name) {
  const auto found = numbers(tags, name);
  if (found.size() != N) return {};
  std::array<double, N> result;
  std::ranges::copy(found, result.begin());
  return result;
}

std::optional<double> meanOf(const Tags& tags, const char* name) {
  const auto found = numbers(tags, name);
  if (found.empty()) return {};
  double sum = 0;
  for (const double n : found) sum += n;
  return sum / static_cast<double>(found.size());
}

uint32_t codeOf(const Tags& tags, const char* name, uint32_t otherwise) {
  const auto found = numbers(tags, name);
  return found.empty() ? otherwise : static_cast<uint32_t>(found[0]);
}

void readLevels(const Tags& tags, CameraMetadata& m) {
  const auto size = array<2>(tags, "BlackLevelRepeatDim").value_or(std::array{1.0, 1.0});
  const auto pattern = numbers(tags, "BlackLevel");
  const double delta =
      meanOf(tags, "BlackLevelDeltaH").value_or(0) + meanOf(tags, "BlackLevelDeltaV").value_or(0);
  const auto rows = static_cast<uint32_t>(size[0]), columns = static_cast<uint32_t>(size[1]);
  if (!pattern.empty() && pattern.size() == size_t{rows} * columns)
    m.black = app::blackOfPattern(pattern, rows, columns, delta);
  m.white = meanOf(tags, "WhiteLevel");
}

void addCalibration(const Tags& tags, const std::string& number, CameraMetadata& m) {
  const auto matrix = array<9>(tags, ("ColorMatrix" + number).c_str());
  if (!matrix) return;
  const uint32_t light = codeOf(tags, ("CalibrationIlluminant" + number).c_str(), 0);
  m.calibrations.push_back(
      {*matrix, array<9>(tags, ("CameraCalibration" + number).c_str()).value_or(app::kIdentity),
       app::temperatureOfSource(light)});
}

CameraMetadata cameraOf(const Tags& tags) {
  CameraMetadata m;
  readLevels(tags, m);
  m.neutral = array<3>(tags, "AsShotNeutral");
  if (const auto xy = array<2>(tags, "AsShotWhiteXY")) m.light = {(*xy)[0], (*xy)[1]};
  m.analogBalance = array<3>(tags, "AnalogBalance");
  addCalibration(tags, "1", m);
  addCalibration(tags, "2", m);
  if (const uint32_t code = codeOf(tags, "Orientation", 0)) m.orientation = code;
  m.baselineExposure = meanOf(tags, "BaselineExposure");
  if (const auto size = array<2>(tags, "DefaultCropSize")) {
    const auto origin = array<2>(tags, "DefaultCropOrigin").value_or(std::array{0.0, 0.0});
    const auto pixels = [](double v) {
      return static_cast<uint32_t>(std::clamp(v, 0.0, 4e9) + 0.5);
    };
    m.crop = {pixels(origin[0]), pixels(origin[1]), pixels((*size)[0]), pixels((*size)[1])};
  }
  app::forgetAssumptions(m, tags.value("Software", ""), codeOf(tags, "CalibrationIlluminant1", 0));
  return m;
}

void readPhase(const Tags& tags, Description& d) {
  const auto block = array<4>(tags, "CFAPattern");
  if (!block) return;
  std::array<uint32_t, 4> colours;
  std::ranges::transform(*block, colours.begin(),
                         [](double code) { return static_cast<uint32_t>(code); });
  const uint32_t phase = app::phaseOfBlock(colours);
  if (phase != VISTREL_MONO) d.phase = phase;
  if (!d.phase) d.phaseFault = "TIFF: its CFAPattern is not one of the four Bayer phases";
}

// Files hold neutral and matrix in steps of this part.
template <size_t N>
std::array<double, N> stored(std::array<double, N> values) {
  constexpr double kSteps = 65536;
  for (double& v : values) v = std::round(v * kSteps) / kSteps;
  return values;
}

CameraMetadata cameraOf(const app::DngCamera& camera) {
  CameraMetadata m;
  m.black = camera.black;
  m.white = camera.white;
  if (camera.neutral) m.neutral = stored(*camera.neutral);
  m.calibrations.push_back(
      {stored(camera.matrix), app::kIdentity, app::temperatureOfSource(camera.illuminant)});
  m.orientation = camera.orientation;
  return m;
}

}  // namespace

Decoded& decoded() {
  static Decoded frame;
  return frame;
}

Description descriptionOf(const Tags& tags) {
  Description d;
  d.format = tags.at("format");
  d.width = codeOf(tags, "ImageWidth", 0);
  d.height = codeOf(tags, "ImageLength", 0);
  const uint32_t stored = codeOf(tags, "BitsPerSample", 8);
  d.bytesPerSample = stored > 8 ? 2 : 1;
  d.bits = codeOf(tags, "SignificantBits", stored);
  d.camera = cameraOf(tags);
  const auto white = static_cast<uint64_t>(d.camera.white.value_or(0));
  const auto bits = static_cast<uint32_t>(std::bit_width(white));
  if (bits >= 8 && bits < d.bits) d.bits = bits;
  d.bitsKnown = d.bits < 16 || white;
  readPhase(tags, d);
  dropInvalid(d.camera, d.width, d.height, d.warnings);
  return d;
}

Decoded decodedScene(const app::SceneOptions& o, uint32_t phase) {
  Image image = sceneFrame(o, phase);
  Description d;
  d.format = "test scene";
  d.width = image.layout.width;
  d.height = image.layout.height;
  d.bits = o.bits;
  d.bitsKnown = true;
  d.bytesPerSample = o.bits > 8 ? 2 : 1;
  d.phase = phase;
  d.camera = cameraOf(sceneCamera(o, phase));
  return {d, {image.pixels.begin(), image.pixels.end()}};
}

}  // namespace vistrel::page
