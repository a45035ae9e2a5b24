#include "apps/commands/commands.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/commands/camera_info.h"
#include "apps/error.h"
#include "apps/input/frame_file.h"
#include "apps/input/statistics.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"

namespace vistrel::app {
namespace {

constexpr const char* kInfoExamples = R"(Examples:
  vistrel info rose.pgm
  vistrel info cam.raw -s 1280x960 --bits 10 --json)";

using Json = nlohmann::ordered_json;

struct InfoOptions {
  std::vector<std::string> paths;
  InputOptions input;
  bool json = false;
};

void printText(const FrameFile& file, const Statistics& s) {
  const vistrel_frame& f = file.frame();
  const Description& d = file.description();
  fmt::print("format           {}\n", d.format);
  if (d.pixfmt) fmt::print("pixel format     {}\n", *d.pixfmt);
  fmt::print("size             {} x {}\n", f.width, f.height);
  if (d.frames > 1) fmt::print("frames           {}\n", d.frames);
  fmt::print("sample           {} byte{}\n", f.bytes_per_sample, f.bytes_per_sample > 1 ? "s" : "");
  if (d.maxval) fmt::print("maxval           {}\n", *d.maxval);
  fmt::print("bits             {}{}\n", f.bits, d.bitsKnown ? "" : " (not specified)");
  fmt::print("phase            {}\n", d.phase ? vistrel_phase_name(*d.phase) : "not specified");
  printCamera(d.camera, cameraColour(d.camera));
  if (d.trailing) fmt::print("trailing bytes   {}\n", d.trailing);
  fmt::print("bits used        {}\n", s.usedBits);
  fmt::print("zero low bits    {}\n", s.zeroLowBits);
  fmt::print("lowest           {}\n", s.lowest);
  fmt::print("highest          {} ({:.3f} % of samples)\n", s.highest, s.percentAtHighest);
  fmt::print("mean             {:.3f}\n", s.mean);
  fmt::print("saturated        {:.3f} % of samples, at {} or above\n", s.percentSaturated,
             s.saturation);
}

Json jsonOf(const FrameFile& file, const Statistics& s) {
  const vistrel_frame& f = file.frame();
  const Description& d = file.description();
  Json json{{"format", d.format},
            {"pixel_format", orNull(d.pixfmt)},
            {"frames", d.frames},
            {"width", f.width},
            {"height", f.height},
            {"bytes_per_sample", f.bytes_per_sample},
            {"maxval", orNull(d.maxval)},
            {"bits", f.bits},
            {"bits_known", d.bitsKnown},
            {"phase", nullptr},
            {"trailing_bytes", d.trailing},
            {"bits_used", s.usedBits},
            {"zero_low_bits", s.zeroLowBits},
            {"min", s.lowest},
            {"max", s.highest},
            {"percent_at_max", s.percentAtHighest},
            {"mean", s.mean},
            {"full_scale", s.fullScale},
            {"percent_saturated", s.percentSaturated}};
  if (d.phase) json["phase"] = vistrel_phase_name(*d.phase);
  json.update(jsonOf(d.camera, cameraColour(d.camera)));
  return json;
}

// Prints the description of a frame, with its file's name if there are several; or adds it to
// `all`.
void describe(const std::string& path, const InfoOptions& o, Json& all) {
  const bool several = o.paths.size() > 1;
  PrintedWarnings warnings(path);
  FrameFile file(path, o.input, warnings.list());
  const vistrel_frame& frame = file.read();
  const Statistics statistics = statisticsOf(frame, file.description().camera.white);
  if (o.json) {
    all.push_back({{"file", path}});
    all.back().update(jsonOf(file, statistics));
    return;
  }
  if (several) fmt::print("file             {}\n", path);
  printText(file, statistics);
  if (several) fmt::print("\n");
}

ExitStatus run(const InfoOptions& o) {
  o.input.check();
  Json all = Json::array();
  ExitStatusSum sum;
  for (const std::string& path : o.paths) {
    const Outcome outcome = attempt([&] { describe(path, o, all); });
    if (outcome.status != kDone) {
      fmt::print(stderr, "vistrel: {}: {}\n", path, outcome.text);
      all.push_back({{"file", path}, {"error", outcome.text}});
    }
    sum.add(outcome.status);
  }
  const bool one = o.paths.size() == 1;
  if (o.json)
    fmt::print("{}\n", (one ? all[0] : all).dump(2, ' ', false, Json::error_handler_t::replace));
  return sum.status();
}

}  // namespace

void addInfoCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("info", "Describe raw frames");
  const auto o = std::make_shared<InfoOptions>();
  command
      ->add_option(
          "IN", o->paths,
          "Frames: PGM, PAM, PNG, NPY, TIFF, DNG, FITS, camera raw, headerless; - is stdin")
      ->required();
  command->add_flag("--json", o->json, "Print JSON");
  addInputOptions(*command, o->input);
  command->footer(kInfoExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
