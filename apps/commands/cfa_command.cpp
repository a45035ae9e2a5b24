#include "apps/commands/commands.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "apps/error.h"
#include "apps/names/names_json.h"
#include "apps/options/frame_name.h"
#include "apps/options/geometry.h"
#include "apps/options/options.h"

namespace vistrel::app {
namespace {

constexpr const char* kCfaExamples = R"(Examples:
  vistrel cfa rggb
  vistrel cfa blue=1,1 --crop 640x480+3+2
  vistrel cfa grbg -s 1280x961 --flip v --json

The frame is cropped first, then flipped, then rotated. Without --size or
--crop, its width and height are assumed to be even.)";

struct CfaOptions {
  std::string phase;
  std::optional<Size> size;
  std::optional<vistrel_region> crop;
  std::string flip, rotate;
  bool json = false;
};

uint32_t resultOf(const CfaOptions& o) {
  uint32_t phase = parsePhase("PHASE", o.phase);
  Size size = o.size.value_or(Size{2, 2});
  if (o.crop) {
    const vistrel_region& crop = *o.crop;
    if (!crop.width || !crop.height) throwError(kUsage, "--crop {}: it is empty", regionText(crop));
    if (o.size && (uint64_t{crop.x} + crop.width > size.width ||
                   uint64_t{crop.y} + crop.height > size.height))
      throwError(kUsage, "--crop {}: it extends beyond the frame of {}x{}", regionText(crop),
                 size.width, size.height);
    phase = vistrel_phase_at(phase, crop.x, crop.y);
    size = {crop.width, crop.height};
  }
  if (o.flip == "h") phase = vistrel_phase_at(phase, size.width - 1, 0);
  if (o.flip == "v") phase = vistrel_phase_at(phase, 0, size.height - 1);
  if (o.rotate == "180") phase = vistrel_phase_at(phase, size.width - 1, size.height - 1);
  return phase;
}

// All names of formats of that phase in one convention.
std::string namesOf(uint32_t phase, std::string PixelFormat::*convention) {
  std::string names;
  for (const PixelFormat& f : pixelFormats())
    if (f.phase == phase && !(f.*convention).empty())
      names += (names.empty() ? "" : " ") + f.*convention;
  return names;
}

void printText(const PhaseNames& n) {
  const auto line = [](const char* title, const std::string& text) {
    if (!text.empty()) fmt::print("{:<17}{}\n", title, text);
  };
  line("phase", n.name);
  if (n.block) {
    line("rows", n.block);
    line("nBayer", std::to_string(n.phase));
    line("blue=y,x", fmt::format("{},{}", n.blue[0], n.blue[1]));
    line("FITS BAYERPAT", n.fits);
    line("DNG CFAPattern", n.dng);
    line("OpenCV", fmt::format("{} (the letters of row 1, column 1)", n.opencv));
  }
  line("constant", n.constant);
  line("PFNC", namesOf(n.phase, &PixelFormat::pfnc));
  line("V4L2 codes", namesOf(n.phase, &PixelFormat::v4l2Code));
  line("V4L2 names", namesOf(n.phase, &PixelFormat::v4l2Name));
  line("libcamera", namesOf(n.phase, &PixelFormat::libcamera));
  line("GStreamer", namesOf(n.phase, &PixelFormat::gstreamer));
  line("FFmpeg", namesOf(n.phase, &PixelFormat::ffmpeg));
}

ExitStatus run(const CfaOptions& o) {
  const PhaseNames& names = phaseNames(resultOf(o));
  if (o.json)
    fmt::print("{}\n", asJson(names));
  else
    printText(names);
  return kDone;
}

}  // namespace

void addCfaCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("cfa", "Compute the phase of a crop or a mirrored frame");
  const auto o = std::make_shared<CfaOptions>();
  command->add_option("PHASE", o->phase, "rggb, bggr, grbg, gbrg, mono, or blue=y,x")->required();
  command
      ->add_option_function<std::string>(
          "-s,--size", [o](const std::string& s) { o->size = parseSize("--size", s); },
          "Size of the frame")
      ->type_name("WxH");
  command
      ->add_option_function<std::string>(
          "--crop", [o](const std::string& s) { o->crop = parseRegion("--crop", s); },
          "Crop the frame to this region")
      ->type_name("WxH+X+Y");
  oneOf(command->add_option("--flip", o->flip, "Mirror left and right, or top and bottom"),
        {"h", "v"});
  oneOf(command->add_option("--rotate", o->rotate, "Rotate by this many degrees"), {"180"});
  command->add_flag("--json", o->json, "Print JSON");
  command->footer(kCfaExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
