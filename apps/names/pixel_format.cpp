#include "apps/names/pixel_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <iterator>

#include "apps/error.h"
#include "apps/names/phase_names.h"

namespace vistrel::app {
namespace {

// The formats of one depth and packing for the five phases: GR, BG, RG, GB, mono.
struct Kind {
  uint32_t packing;
  uint32_t bits;
  const char* pfnc;  // suffix after the phase
  uint32_t pfncValues[kPhases];
  const char* v4l2[kPhases];
  const char* gstreamer = nullptr;  // suffix after grbg, bggr, ...
  const char* gstreamerGray = nullptr;
  const char* ffmpeg = nullptr;  // suffix after bayer_grbg, bayer_bggr, ...
  const char* ffmpegGray = nullptr;
};

// clang-format off
constexpr Kind kKinds[] = {
    {VISTREL_PACKING_BYTES, 8, "8", {0x01080008, 0x0108000B, 0x01080009, 0x0108000A, 0x01080001},
     {"GRBG", "BA81", "RGGB", "GBRG", "GREY"}, "", "GRAY8", "8", "gray"},
    {VISTREL_PACKING_LITTLE, 10, "10", {0x0110000C, 0x0110000F, 0x0110000D, 0x0110000E, 0x01100003},
     {"BA10", "BG10", "RG10", "GB10", "Y10"}, "10le", nullptr, nullptr, "gray10le"},
    {VISTREL_PACKING_LITTLE, 12, "12", {0x01100010, 0x01100013, 0x01100011, 0x01100012, 0x01100005},
     {"BA12", "BG12", "RG12", "GB12", "Y12"}, "12le", nullptr, nullptr, "gray12le"},
    {VISTREL_PACKING_LITTLE, 14, "14", {0x01100109, 0x0110010C, 0x0110010A, 0x0110010B, 0x01100025},
     {"GR14", "BG14", "RG14", "GB14", "Y14"}, "14le", nullptr, nullptr, "gray14le"},
    {VISTREL_PACKING_LITTLE, 16, "16", {0x0110002E, 0x01100031, 0x0110002F, 0x01100030, 0x01100007},
     {"GR16", "BYR2", "RG16", "GB16", "Y16"}, "16le", "GRAY16_LE", "16le", "gray16le"},
    {VISTREL_PACKING_BIG, 10, nullptr, {}, {}, "10be", nullptr, nullptr, "gray10be"},
    {VISTREL_PACKING_BIG, 12, nullptr, {}, {}, "12be", nullptr, nullptr, "gray12be"},
    {VISTREL_PACKING_BIG, 14, nullptr, {}, {}, "14be", nullptr, nullptr, "gray14be"},
    {VISTREL_PACKING_BIG, 16, nullptr, {}, {}, "16be", "GRAY16_BE", "16be", "gray16be"},
    {VISTREL_PACKING_PFNC, 10, "10p", {0x010A0056, 0x010A0052, 0x010A0058, 0x010A0054, 0x010A0046}, {}},
    {VISTREL_PACKING_PFNC, 12, "12p", {0x010C0057, 0x010C0053, 0x010C0059, 0x010C0055, 0x010C0047}, {}},
    {VISTREL_PACKING_GIGE, 10, "10Packed",
     {0x010C0026, 0x010C0029, 0x010C0027, 0x010C0028, 0x010C0004}, {}},
    {VISTREL_PACKING_GIGE, 12, "12Packed",
     {0x010C002A, 0x010C002D, 0x010C002B, 0x010C002C, 0x010C0006}, {}},
    {VISTREL_PACKING_MIPI, 10, nullptr, {}, {"pgAA", "pBAA", "pRAA", "pGAA", "Y10P"}},
    {VISTREL_PACKING_MIPI, 12, nullptr, {}, {"pgCC", "pBCC", "pRCC", "pGCC", "Y12P"}},
    {VISTREL_PACKING_MIPI, 14, nullptr, {}, {"pgEE", "pBEE", "pREE", "pGEE", "Y14P"}},
};
// clang-format on

std::string joined(const std::string& begin, const char* end) { return end ? begin + end : ""; }

PixelFormat formatOf(const Kind& kind, const PhaseNames& phase) {
  const bool mono = !phase.block;
  const std::string name = phase.name;
  const uint32_t value = kind.pfncValues[phase.phase];
  return {phase.phase,
          kind.bits,
          kind.packing,
          joined(phase.pfnc, kind.pfnc),
          value ? fmt::format("0x{:08X}", value) : "",
          joined("", kind.v4l2[phase.phase]),
          mono ? joined("", kind.gstreamerGray) : joined(name, kind.gstreamer),
          mono ? joined("", kind.ffmpegGray) : joined("bayer_" + name, kind.ffmpeg)};
}

std::string lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

bool isCalled(const PixelFormat& f, std::string_view name) {
  return name == f.pfnc || name == f.v4l2 || name == f.gstreamer || name == f.ffmpeg;
}

bool isCalledInAnyCase(const PixelFormat& f, const std::string& name) {
  return name == lower(f.pfnc) || name == lower(f.gstreamer) || name == lower(f.ffmpeg) ||
         name == lower(f.pfncValue);
}

}  // namespace

const std::vector<PixelFormat>& pixelFormats() {
  static const std::vector<PixelFormat> formats = [] {
    std::vector<PixelFormat> all;
    for (const Kind& kind : kKinds)
      for (uint32_t phase = 0; phase < kPhases; ++phase)
        all.push_back(formatOf(kind, phaseNames(phase)));
    return all;
  }();
  return formats;
}

const PixelFormat* findPixelFormat(std::string_view name) {
  name = name.substr(0, name.find_last_not_of(' ') + 1);  // V4L2 pads its codes to four characters
  if (name.empty()) return nullptr;
  for (const PixelFormat& f : pixelFormats())
    if (isCalled(f, name)) return &f;
  for (const PixelFormat& f : pixelFormats())
    if (isCalledInAnyCase(f, lower(name))) return &f;
  return nullptr;
}

const PixelFormat& parsePixelFormat(std::string_view option, std::string_view text) {
  if (const PixelFormat* format = findPixelFormat(text)) return *format;
  throwError(kUsage,
             "{} {}: unknown pixel format. BayerRG12p (PFNC), pRCC (V4L2), rggb12le (GStreamer) "
             "and bayer_rggb16le (FFmpeg) are valid names; `vistrel formats` lists all",
             option, text);
}

const SampleGroup& groupOf(const PixelFormat& format) {
  return *std::find_if(std::begin(kSampleGroups), std::end(kSampleGroups),
                       [&format](const SampleGroup& group) {
                         return group.packing == format.packing && group.bits >= format.bits;
                       });
}

const char* packingName(uint32_t packing) {
  constexpr const char* kNames[] = {"bytes", "16bit-le", "16bit-be", "pfnc", "gige", "mipi"};
  return kNames[packing];
}

}  // namespace vistrel::app
