#include "apps/commands/info_command.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/failure.h"
#include "apps/input/frame_file.h"
#include "apps/input/statistics.h"
#include "apps/options/options.h"

namespace vistrel::app {
namespace {

constexpr const char* kExamples = R"(Examples:
  vistrel info rose.pgm
  vistrel info cam.raw -s 1280x960 --bits 10 --json)";

struct InfoOptions {
  std::string path;
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
  fmt::print("bits             {}{}\n", f.bits, d.tellsBits ? "" : " (the file does not tell)");
  fmt::print("phase            {}\n", d.phase ? vistrel_phase_name(*d.phase) : "not told");
  if (d.black) fmt::print("black level      {}\n", *d.black);
  if (d.white) fmt::print("white level      {}\n", *d.white);
  if (d.trailing) fmt::print("trailing bytes   {}\n", d.trailing);
  fmt::print("bits used        {}\n", s.usedBits);
  fmt::print("zero low bits    {}\n", s.zeroLowBits);
  fmt::print("lowest           {}\n", s.lowest);
  fmt::print("highest          {} ({:.3f} % of samples)\n", s.highest, s.percentAtHighest);
  fmt::print("mean             {:.3f}\n", s.mean);
  fmt::print("saturated        {:.3f} % of samples, at {} or above\n", s.percentSaturated,
             s.fullScale);
}

// Null for what the file does not tell.
template <class T>
nlohmann::ordered_json told(const std::optional<T>& value) {
  return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
}

void printJson(const FrameFile& file, const Statistics& s) {
  const vistrel_frame& f = file.frame();
  const Description& d = file.description();
  nlohmann::ordered_json json{{"format", d.format},
                              {"pixel_format", told(d.pixfmt)},
                              {"frames", d.frames},
                              {"width", f.width},
                              {"height", f.height},
                              {"bytes_per_sample", f.bytes_per_sample},
                              {"maxval", told(d.maxval)},
                              {"bits", f.bits},
                              {"tells_bits", d.tellsBits},
                              {"phase", nullptr},
                              {"black_level", told(d.black)},
                              {"white_level", told(d.white)},
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
  fmt::print("{}\n", json.dump(2));
}

ExitStatus run(const InfoOptions& o) {
  o.input.check();
  const Outcome outcome = attempt([&o] {
    FrameFile file(o.path, o.input);
    printRemarks(file, o.path);
    const Statistics statistics = statisticsOf(file.read());
    o.json ? printJson(file, statistics) : printText(file, statistics);
  });
  if (outcome.status != kDone) throw Failure(outcome.status, o.path + ": " + outcome.text);
  return kDone;
}

}  // namespace

void addInfoCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("info", "Tell what is in a raw frame");
  const auto o = std::make_shared<InfoOptions>();
  command
      ->add_option("IN", o->path,
                   "Frame: PGM, PNG, TIFF, DNG, FITS, camera raw, dump; - reads standard input")
      ->required();
  command->add_flag("--json", o->json, "Print JSON");
  addInputOptions(*command, o->input);
  command->footer(kExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
