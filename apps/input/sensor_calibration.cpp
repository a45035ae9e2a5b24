#include "apps/input/sensor_calibration.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>

#include "apps/error.h"
#include "apps/input/calibrated_frame.h"

namespace vistrel::app {
namespace {

// Calls `read`; its errors name the option.
template <class Read>
void readFor(const std::string& option, Read read) {
  try {
    read();
  } catch (const ProgramError& error) {
    throwError(error.status(), "{}: {}", option, error.what());
  } catch (const Error& error) {
    throwError(kRejected, "{}: {}", option, error.what());
  }
}

std::vector<uint16_t> samplesOf(const vistrel_frame& f) {
  std::vector<uint16_t> samples(size_t{f.width} * f.height);
  const uint32_t below = f.alignment == VISTREL_HIGH_BITS ? 16 - f.bits : 0;
  for (size_t i = 0; i < samples.size(); ++i) {
    if (f.bytes_per_sample == 1)
      samples[i] = static_cast<const uint8_t*>(f.samples)[i];
    else
      std::memcpy(&samples[i], static_cast<const uint8_t*>(f.samples) + 2 * i, 2);
    samples[i] = static_cast<uint16_t>(samples[i] >> below);
  }
  return samples;
}

vistrel_point parsePoint(const std::string& line, size_t number) {
  std::istringstream words(line);
  int64_t x = -1, y = -1;
  std::string rest;
  words >> x >> y;
  if (words.fail() || words >> rest || x < 0 || y < 0 || x > UINT32_MAX || y > UINT32_MAX)
    throwError(kUsage, "line {}: {:?}: a column and a row, counted from 0, are expected", number,
               line);
  return {static_cast<uint32_t>(x), static_cast<uint32_t>(y)};
}

}  // namespace

void addReadFiles(const CalibrationOptions& o, RunFiles& files) {
  if (!o.dark.empty()) files.addRead("--dark", o.dark);
  if (!o.flat.empty()) files.addRead("--flat", o.flat);
  if (!o.hot.empty()) files.addRead("--hot", o.hot);
}

SensorCalibration::SensorCalibration(const CalibrationOptions& o, InputOptions input) {
  input.fromName = input.needsPhase = false;
  if (!o.dark.empty()) readDark(o.dark, input);
  if (!o.flat.empty()) readFlat(o.flat, input);
  if (!o.hot.empty()) readHot(o.hot);
}

void SensorCalibration::readDark(const std::string& path, const InputOptions& input) {
  dark_.option = "--dark " + path;
  readFor(dark_.option, [&] {
    PrintedWarnings warnings(dark_.option);
    FrameFile file(path, input, warnings.list());
    const vistrel_frame& frame = file.read();
    dark_.describe(frame);
    dark_.values = samplesOf(frame);
  });
  calibration_.dark = dark_.values.data();
  calibration_.dark_size = 2 * dark_.values.size();
}

void SensorCalibration::readFlat(const std::string& path, const InputOptions& input) {
  flat_.option = "--flat " + path;
  readFor(flat_.option, [&] {
    PrintedWarnings warnings(flat_.option);
    FrameFile file(path, input, warnings.list());
    const vistrel_frame& frame = file.read();
    flat_.describe(frame);
    flat_.values.resize(size_t{frame.width} * frame.height);
    vistrel_conversion conversion = defaultConversion(frame);
    if (!dark_.values.empty()) {
      checkFits(frame);
      conversion.calibration = &calibration_;
    } else if (const auto& black = file.description().camera.black) {
      for (size_t i = 0; i < 4; ++i) conversion.black[i] = static_cast<uint32_t>((*black)[i] + 0.5);
    }
    vistrel_error error{};
    if (vistrel_measure_flat(&frame, &conversion, flat_.values.data(), 2 * flat_.values.size(),
                             &error) != VISTREL_OK)
      throwError(kRejected, "{}", error.text);
    warnOfDarkness(frame, conversion);
  });
  calibration_.flat = flat_.values.data();
  calibration_.flat_size = 2 * flat_.values.size();
}

void SensorCalibration::readHot(const std::string& path) {
  hotOption_ = "--hot " + path;
  readFor(hotOption_, [&] {
    std::ifstream in(path);
    if (!in) throwError(kInputOutput, "it cannot be read");
    std::string line;
    for (size_t number = 1; std::getline(in, line); ++number) {
      line.erase(std::min(line.find('#'), line.size()));
      if (line.find_first_not_of(" \t\r") != std::string::npos)
        hot_.push_back(parsePoint(line, number));
    }
    if (in.bad()) throwError(kInputOutput, "it cannot be read");
  });
  const auto key = [](const vistrel_point& p) { return std::pair(p.y, p.x); };
  std::sort(hot_.begin(), hot_.end(),
            [key](const auto& a, const auto& b) { return key(a) < key(b); });
  hot_.erase(std::unique(hot_.begin(), hot_.end(),
                         [key](const auto& a, const auto& b) { return key(a) == key(b); }),
             hot_.end());
  calibration_.hot = hot_.data();
  calibration_.hot_count = hot_.size();
}

void SensorCalibration::Levels::describe(const vistrel_frame& frame) {
  width = frame.width, height = frame.height;
  phase = frame.phase, bits = frame.bits;
}

void SensorCalibration::Levels::checkFits(const vistrel_frame& frame) const {
  if (option.empty()) return;
  if (width != frame.width || height != frame.height)
    throwError(kRejected, "{}: it has {}x{} pixels; this frame has {}x{}", option, width, height,
               frame.width, frame.height);
  if (phase != frame.phase)
    throwError(kRejected, "{}: its phase is {}; that of this frame is {}", option,
               vistrel_phase_name(phase), vistrel_phase_name(frame.phase));
}

// Gains hold at any depth, levels don't.
void SensorCalibration::checkFits(const vistrel_frame& frame) const {
  dark_.checkFits(frame);
  flat_.checkFits(frame);
  if (hasDark() && dark_.bits != frame.bits)
    throwError(kRejected, "{}: it has {} bits; this frame has {}", dark_.option, dark_.bits,
               frame.bits);
}

void SensorCalibration::warnOfDarkness(const vistrel_frame& flat, const vistrel_conversion& c) {
  Image memory;
  const vistrel_calibration levels = darkOnly();
  const auto light =
      samplesOf(calibratedFrame(flat, levels, std::to_array(c.black), VISTREL_MASK, memory));
  const auto dark = static_cast<size_t>(std::ranges::count(light, 0));
  if (dark == light.size())
    warnings_.push_back(
        fmt::format("{}: no pixel has light above black; it changes nothing", flat_.option));
  else if (dark)
    warnings_.push_back(
        fmt::format("{}: {} of {} pixels have no light above black, so no gain evens them out",
                    flat_.option, dark, light.size()));
}

void SensorCalibration::apply(const vistrel_frame& frame, vistrel_conversion& conversion) const {
  if (isEmpty()) return;
  checkFits(frame);
  for (const vistrel_point& p : hot_)
    if (p.x >= frame.width || p.y >= frame.height)
      throwError(kRejected, "{}: pixel {} {} lies outside the frame of {}x{}", hotOption_, p.x, p.y,
                 frame.width, frame.height);
  conversion.calibration = &calibration_;
}

uint32_t SensorCalibration::darkMean() const {
  uint64_t sum = 0, count = dark_.values.size();
  for (const uint16_t level : dark_.values) sum += level;
  return count ? static_cast<uint32_t>((sum + count / 2) / count) : 0;
}

vistrel_calibration SensorCalibration::darkOnly() const {
  vistrel_calibration dark = calibration_;
  dark.flat = nullptr;
  dark.hot_count = 0;
  return dark;
}

}  // namespace vistrel::app
