#include "apps/names/pixel_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <numeric>

#include "apps/error.h"
#include "apps/names/nearest_name.h"
#include "apps/names/phase_names.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

constexpr const char* kV4l2Prefix = "V4L2_PIX_FMT_";

// What follows the bits in the names of a packing.
struct Suffixes {
  PackingNames names;
  const char* pfnc;
  const char* v4l2;
  const char* libcamera;
  bool mipi;  // has names of CSI-2's data types
};
constexpr Suffixes kSuffixes[] = {
    {{"bytes", "bytes"}, "", "", "", true},
    {{"16bit-le", "16-bit samples, little-endian, in the low bits"}, "", "", "", false},
    {{"16bit-be", "16-bit samples, big-endian, in the low bits"}, nullptr, nullptr, nullptr, false},
    {{"pfnc", "PFNC p: one stream of bits, lowest bits first"}, "p", nullptr, nullptr, false},
    {{"gige", "GigE Vision Packed: two pixels in three bytes"}, "Packed", nullptr, nullptr, false},
    {{"mipi", "MIPI CSI-2: the high bytes of two or four pixels, then their low bits"},
     nullptr,
     "P",
     "_CSI2P",
     true},
};

// The formats of one depth and packing for the five phases: GR, BG, RG, GB, mono.
struct Kind {
  uint32_t packing;
  uint32_t bits;
  uint32_t pfncValues[kPhases];
  const char* v4l2Codes[kPhases];
  const char* gstreamer = nullptr;  // suffix after grbg, bggr, ...
  const char* gstreamerGray = nullptr;
  const char* ffmpeg = nullptr;  // suffix after bayer_grbg, bayer_bggr, ...
  const char* ffmpegGray = nullptr;
};

// clang-format off
constexpr Kind kKinds[] = {
    {VISTREL_PACKING_BYTES, 8, {0x01080008, 0x0108000B, 0x01080009, 0x0108000A, 0x01080001},
     {"GRBG", "BA81", "RGGB", "GBRG", "GREY"}, "", "GRAY8", "8", "gray"},
    {VISTREL_PACKING_LITTLE, 10, {0x0110000C, 0x0110000F, 0x0110000D, 0x0110000E, 0x01100003},
     {"BA10", "BG10", "RG10", "GB10", "Y10"}, "10le", nullptr, nullptr, "gray10le"},
    {VISTREL_PACKING_LITTLE, 12, {0x01100010, 0x01100013, 0x01100011, 0x01100012, 0x01100005},
     {"BA12", "BG12", "RG12", "GB12", "Y12"}, "12le", nullptr, nullptr, "gray12le"},
    {VISTREL_PACKING_LITTLE, 14, {0x01100109, 0x0110010C, 0x0110010A, 0x0110010B, 0x01100025},
     {"GR14", "BG14", "RG14", "GB14", "Y14"}, "14le", nullptr, nullptr, "gray14le"},
    {VISTREL_PACKING_LITTLE, 16, {0x0110002E, 0x01100031, 0x0110002F, 0x01100030, 0x01100007},
     {"GR16", "BYR2", "RG16", "GB16", "Y16"}, "16le", "GRAY16_LE", "16le", "gray16le"},
    {VISTREL_PACKING_BIG, 10, {}, {}, "10be", nullptr, nullptr, "gray10be"},
    {VISTREL_PACKING_BIG, 12, {}, {}, "12be", nullptr, nullptr, "gray12be"},
    {VISTREL_PACKING_BIG, 14, {}, {}, "14be", nullptr, nullptr, "gray14be"},
    {VISTREL_PACKING_BIG, 16, {}, {}, "16be", "GRAY16_BE", "16be", "gray16be"},
    {VISTREL_PACKING_PFNC, 10, {0x010A0056, 0x010A0052, 0x010A0058, 0x010A0054, 0x010A0046}, {}},
    {VISTREL_PACKING_PFNC, 12, {0x010C0057, 0x010C0053, 0x010C0059, 0x010C0055, 0x010C0047}, {}},
    {VISTREL_PACKING_PFNC, 14, {0x010E0105, 0x010E0108, 0x010E0106, 0x010E0107, 0x010E0104}, {}},
    {VISTREL_PACKING_GIGE, 10, {0x010C0026, 0x010C0029, 0x010C0027, 0x010C0028, 0x010C0004}, {}},
    {VISTREL_PACKING_GIGE, 12, {0x010C002A, 0x010C002D, 0x010C002B, 0x010C002C, 0x010C0006}, {}},
    {VISTREL_PACKING_MIPI, 10, {}, {"pgAA", "pBAA", "pRAA", "pGAA", "Y10P"}},
    {VISTREL_PACKING_MIPI, 12, {}, {"pgCC", "pBCC", "pRCC", "pGCC", "Y12P"}},
    {VISTREL_PACKING_MIPI, 14, {}, {"pgEE", "pBEE", "pREE", "pGEE", "Y14P"}},
};
// clang-format on

std::string joined(const std::string& begin, const char* end) { return end ? begin + end : ""; }

std::string changed(std::string text, int (*change)(int)) {
  std::ranges::transform(text, text.begin(),
                         [change](unsigned char c) { return static_cast<char>(change(c)); });
  return text;
}
std::string lower(const std::string& text) { return changed(text, std::tolower); }
std::string upper(const std::string& text) { return changed(text, std::toupper); }

PixelFormat formatOf(const Kind& kind, const PhaseNames& phase) {
  const bool mono = !phase.block;
  const std::string name = phase.name, bits = std::to_string(kind.bits), bayer = "S" + upper(name);
  const uint32_t value = kind.pfncValues[phase.phase];
  const Suffixes& suffixes = kSuffixes[kind.packing];
  PixelFormat f{phase.phase, kind.bits, kind.packing, {}, {}, {}, {}, {}, {}, {}, {}};
  f.pfnc = joined(phase.pfnc + bits, suffixes.pfnc);
  f.pfncValue = value ? fmt::format("0x{:08X}", value) : "";
  f.v4l2Code = joined("", kind.v4l2Codes[phase.phase]);
  f.v4l2Name = joined((mono ? "Y" : bayer) + bits, suffixes.v4l2);
  if (mono && kind.bits == 8) f.v4l2Name = f.v4l2Code;
  f.libcamera = joined((mono ? "R" : bayer) + bits, suffixes.libcamera);
  f.gstreamer = mono ? joined("", kind.gstreamerGray) : joined(name, kind.gstreamer);
  f.ffmpeg = mono ? joined("", kind.ffmpegGray) : joined("bayer_" + name, kind.ffmpeg);
  return f;
}

void addFormats(const Kind& kind, std::vector<PixelFormat>& all) {
  for (uint32_t phase = 0; phase < kPhases; ++phase)
    all.push_back(formatOf(kind, phaseNames(phase)));
  if (!kSuffixes[kind.packing].mipi) return;
  const std::string name = "RAW" + std::to_string(kind.bits);
  all.push_back({std::nullopt, kind.bits, kind.packing, {}, {}, {}, {}, {}, {}, {}, name});
}

std::vector<std::string> allNames() {
  std::vector<std::string> all;
  for (const PixelFormat& f : pixelFormats()) {
    const auto names = namesOf(f);
    all.insert(all.end(), names.begin(), names.end());
    all.push_back(f.v4l2Code);
  }
  return all;
}

}  // namespace

std::vector<std::string> namesOf(const PixelFormat& f) {
  std::vector<std::string> names{f.pfnc,      f.pfncValue, f.v4l2Name, kV4l2Prefix + f.v4l2Name,
                                 f.libcamera, f.gstreamer, f.ffmpeg,   f.mipi};
  std::erase_if(names, [](const auto& name) { return name.empty() || name == kV4l2Prefix; });
  return names;
}

const std::vector<PixelFormat>& pixelFormats() {
  static const std::vector<PixelFormat> formats = [] {
    std::vector<PixelFormat> all;
    for (const Kind& kind : kKinds) addFormats(kind, all);
    return all;
  }();
  return formats;
}

const PixelFormat* findPixelFormat(std::string_view name) {
  const std::string text(name.substr(0, name.find_last_not_of(' ') + 1));  // V4L2 pads its codes
  if (text.empty()) return nullptr;
  const auto isCalled = [&text](const PixelFormat& f) {
    return text == f.v4l2Code || std::ranges::count(namesOf(f), text);
  };
  const auto isCalledInAnyCase = [name = lower(text)](const PixelFormat& f) {
    return std::ranges::count(namesOf(f), name, lower);
  };
  // Depths that FFmpeg lacks: bayer_rggb10le.
  const auto isCalledAsByFfmpeg = [&text](const PixelFormat& f) {
    return f.ffmpeg.empty() && !f.gstreamer.empty() && text == "bayer_" + f.gstreamer;
  };
  const auto& all = pixelFormats();
  auto found = std::ranges::find_if(all, isCalled);
  if (found == all.end()) found = std::ranges::find_if(all, isCalledInAnyCase);
  if (found == all.end()) found = std::ranges::find_if(all, isCalledAsByFfmpeg);
  return found == all.end() ? nullptr : &*found;
}

const PixelFormat& parsePixelFormat(std::string_view option, std::string_view text) {
  if (const PixelFormat* format = findPixelFormat(text)) return *format;
  const std::string nearest = nearestText(text, allNames());
  if (!nearest.empty())
    throwError(kUsage, "{} {}: unknown pixel format{}; `vistrel formats` lists all", option, text,
               nearest);
  throwError(kUsage,
             "{} {}: unknown pixel format. BayerRG12p (PFNC), pRCC and SRGGB12P (V4L2), "
             "SRGGB12_CSI2P (libcamera), rggb12le (GStreamer) and bayer_rggb16le (FFmpeg) are "
             "valid names; `vistrel formats` lists all",
             option, text);
}

bool are16Bit(uint32_t packing) {
  return packing == VISTREL_PACKING_LITTLE || packing == VISTREL_PACKING_BIG;
}

// Eight samples fill whole bytes in every packing.
SampleGroup groupOf(uint32_t packing, uint32_t bits) {
  const auto bytes =
      static_cast<uint32_t>(packedLayoutOf(packedOf({}, 8, 1, packing, bits)).row_bytes);
  const uint32_t groups = std::gcd(8u, bytes);
  return {8 / groups, bytes / groups};
}

const PackingNames& packingNames(uint32_t packing) { return kSuffixes[packing].names; }

}  // namespace vistrel::app
