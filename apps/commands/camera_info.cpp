#include "apps/commands/camera_info.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace vistrel::app {
namespace {

using Json = nlohmann::ordered_json;

constexpr double kMatrixOne = 4096;

template <class T>
void print(const char* name, const std::optional<T>& value, const char* unit = "") {
  if (value) fmt::print("{:<16} {}{}\n", name, *value, unit);
}

template <class T>
void printAll(const char* name, const T& values) {
  fmt::print("{:<16} {}\n", name, fmt::join(values, " "));
}

// 1/4096 as decimals
template <class T>
void printParts(const char* name, const T& values) {
  fmt::print("{:<16}", name);
  for (const auto v : values) fmt::print(" {:.4f}", v / kMatrixOne);
  fmt::print("\n");
}

void printCalibration(const Calibration& c) {
  fmt::print("colour matrix    {}{}\n", fmt::join(c.fromXyz, " "),
             c.temperature ? fmt::format(", at {} K", *c.temperature) : "");
  if (c.individual != kIdentity) printAll("calibration", c.individual);
}

void printLevels(const CameraMetadata& m) {
  if (m.black) {
    const bool areEqual = std::ranges::count(*m.black, m.black->front()) == 4;
    if (areEqual)
      print("black level", std::optional(m.black->front()));
    else
      printAll("black level", *m.black);
  }
  print("white level", m.white);
}

void printColour(const CameraMetadata& m, const CameraColour& colour) {
  if (m.neutral) printAll("neutral", *m.neutral);
  if (m.light) printAll("white x, y", std::array{m.light->x, m.light->y});
  if (m.analogBalance) printAll("analog balance", *m.analogBalance);
  for (const Calibration& c : m.calibrations) printCalibration(c);
  if (colour.temperature) fmt::print("temperature      {:.0f} K\n", *colour.temperature);
  if (colour.gains) printParts("gains", *colour.gains);
  if (colour.matrix) printParts("camera to sRGB", *colour.matrix);
  if (!colour.fault.empty()) fmt::print("camera to sRGB   none: {}\n", colour.fault);
}

void printGeometry(const CameraMetadata& m) {
  if (m.orientation)
    fmt::print("orientation      {} (convert keeps the sensor's orientation)\n", *m.orientation);
  if (m.crop)
    fmt::print("crop             {}x{}+{}+{}\n", m.crop->width, m.crop->height, m.crop->x,
               m.crop->y);
}

Json jsonOf(const Calibration& c) {
  return {{"temperature", orNull(c.temperature)},
          {"from_xyz", c.fromXyz},
          {"individual", c.individual}};
}

Json jsonOf(const std::vector<Calibration>& calibrations) {
  Json json = Json::array();
  for (const Calibration& c : calibrations) json.push_back(jsonOf(c));
  return json;
}

// 1/4096 as decimals
template <class T>
Json parts(const std::optional<T>& values) {
  if (!values) return {};
  Json json = Json::array();
  for (const auto v : *values) json.push_back(v / kMatrixOne);
  return json;
}

}  // namespace

void printCamera(const CameraMetadata& m, const CameraColour& colour) {
  printLevels(m);
  printColour(m, colour);
  printGeometry(m);
  print("make", m.make);
  print("model", m.model);
  print("date", m.date);
  print("exposure time", m.exposureTime, " s");
  print("ISO", m.iso);
  print("gain", m.gain);
  print("aperture", m.aperture);
  print("focal length", m.focalLength, " mm");
  print("baseline exp.", m.baselineExposure, " stops");
}

Json jsonOf(const CameraMetadata& m, const CameraColour& colour) {
  Json json{{"black_level", orNull(m.black)},
            {"white_level", orNull(m.white)},
            {"neutral", orNull(m.neutral)},
            {"white_xy", nullptr},
            {"analog_balance", orNull(m.analogBalance)},
            {"calibrations", jsonOf(m.calibrations)},
            {"temperature", orNull(colour.temperature)},
            {"gains", parts(colour.gains)},
            {"camera_to_srgb", parts(colour.matrix)},
            {"orientation", orNull(m.orientation)},
            {"crop", nullptr},
            {"make", orNull(m.make)},
            {"model", orNull(m.model)},
            {"date", orNull(m.date)},
            {"exposure_time", orNull(m.exposureTime)},
            {"iso", orNull(m.iso)},
            {"gain", orNull(m.gain)},
            {"aperture", orNull(m.aperture)},
            {"focal_length", orNull(m.focalLength)},
            {"baseline_exposure", orNull(m.baselineExposure)}};
  if (m.light) json["white_xy"] = {m.light->x, m.light->y};
  if (m.crop)
    json["crop"] = {
        {"x", m.crop->x}, {"y", m.crop->y}, {"width", m.crop->width}, {"height", m.crop->height}};
  return json;
}

}  // namespace vistrel::app
