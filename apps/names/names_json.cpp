#include "apps/names/names_json.h"

#include <nlohmann/json.hpp>

#include "apps/names/output_names.h"

namespace vistrel::app {
namespace {

using Json = nlohmann::ordered_json;

Json orNull(const char* text) { return text ? Json(text) : Json(nullptr); }
Json orNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

Json jsonOf(const PhaseNames& n) {
  Json json{{"phase", n.name},        {"rows", orNull(n.block)}, {"nBayer", nullptr},
            {"constant", n.constant}, {"pfnc", n.pfnc},          {"fits", orNull(n.fits)},
            {"dng", orNull(n.dng)},   {"blue", nullptr},         {"opencv", orNull(n.opencv)}};
  if (n.block) json["nBayer"] = n.phase;
  if (n.block) json["blue"] = n.blue;
  return json;
}

Json jsonOf(const PixelFormat& f) {
  return {{"packing", packingNames(f.packing).name},
          {"bits", f.bits},
          {"phase", orNull(f.phase ? phaseNames(*f.phase).name : nullptr)},
          {"pfnc", orNull(f.pfnc)},
          {"pfnc_value", orNull(f.pfncValue)},
          {"v4l2", orNull(f.v4l2Code)},
          {"v4l2_name", orNull(f.v4l2Name)},
          {"libcamera", orNull(f.libcamera)},
          {"gstreamer", orNull(f.gstreamer)},
          {"ffmpeg", orNull(f.ffmpeg)},
          {"mipi", orNull(f.mipi)}};
}

Json jsonOf(const OutputNames& n) {
  return {{"constant", n.constant},
          {"bytes", n.bytes},
          {"order", n.order},
          {"v4l2", orNull(n.v4l2)},
          {"gstreamer", orNull(n.gstreamer)},
          {"ffmpeg", n.ffmpeg},
          {"opencv", n.opencv}};
}

}  // namespace

std::string namesAsJson() {
  Json json{{"phases", Json::array()}, {"raw", Json::array()}, {"results", Json::array()}};
  for (uint32_t phase = 0; phase < kPhases; ++phase)
    json["phases"].push_back(jsonOf(phaseNames(phase)));
  for (const PixelFormat& f : pixelFormats()) json["raw"].push_back(jsonOf(f));
  for (const OutputNames& n : outputNames()) json["results"].push_back(jsonOf(n));
  return json.dump(2);
}

std::string asJson(const PhaseNames& names) { return jsonOf(names).dump(2); }
std::string asJson(const PixelFormat& format) { return jsonOf(format).dump(2); }

}  // namespace vistrel::app
