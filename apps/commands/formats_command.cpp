#include "apps/commands/commands.h"

#include <fmt/format.h>

#include <memory>
#include <string>

#include "apps/error.h"
#include "apps/names/names_json.h"
#include "apps/names/output_names.h"

namespace vistrel::app {
namespace {

constexpr const char* kFormatsExamples = R"(Examples:
  vistrel formats
  vistrel formats SRGGB12P
  vistrel formats --json

--pixfmt accepts the names of this list, and PFNC values.)";

struct FormatsOptions {
  std::string name;
  bool json = false;
};

const char* orDash(const char* text) { return text ? text : "-"; }
std::string orDash(const std::string& text) { return text.empty() ? "-" : text; }

void printPhases() {
  fmt::print("Colours of the 2x2 block in the top left corner\n");
  fmt::print("  {:7}{:7}{:8}{:14}{:9}{:6}{:16}{:10}{}\n", "phase", "rows", "nBayer", "constant",
             "PFNC", "FITS", "DNG CFAPattern", "blue=y,x", "OpenCV *");
  for (uint32_t phase = 0; phase < kPhases; ++phase) {
    const PhaseNames& n = phaseNames(phase);
    const std::string blue = n.block ? fmt::format("{},{}", n.blue[0], n.blue[1]) : "-";
    fmt::print("  {:7}{:7}{:8}{:14}{:9}{:6}{:16}{:10}{}\n", n.name, orDash(n.block),
               n.block ? std::to_string(n.phase) : "-", n.constant, n.pfnc, orDash(n.fits),
               orDash(n.dng), blue, orDash(n.opencv));
  }
  fmt::print(
      "  * the letters of OpenCV are those of the block at row 1, column 1; no option "
      "accepts them\n");
}

constexpr const char* kFormatLine = "  {:<7}{:<6}{:<17}{:<12}{:<6}{:<10}{:<15}{:<12}{:<16}{}\n";

void printTitle(uint32_t packing) {
  fmt::print("\nRaw frames, {}\n", packingNames(packing).title);
  fmt::print(kFormatLine, "phase", "bits", "PFNC", "value", "V4L2", "V4L2 name", "libcamera",
             "GStreamer", "FFmpeg", "MIPI");
}

void print(const PixelFormat& f) {
  fmt::print(kFormatLine, f.phase ? phaseNames(*f.phase).name : "-", f.bits, orDash(f.pfnc),
             orDash(f.pfncValue), orDash(f.v4l2Code), orDash(f.v4l2Name), orDash(f.libcamera),
             orDash(f.gstreamer), orDash(f.ffmpeg), orDash(f.mipi));
}

void printRawFormats() {
  const PixelFormat* last = nullptr;
  for (const PixelFormat& f : pixelFormats()) {
    if (!last || last->packing != f.packing) printTitle(f.packing);
    print(f);
    last = &f;
  }
  fmt::print(
      "\n  V4L2 names may begin with V4L2_PIX_FMT_; with a MIPI name, --phase says the phase\n");
}

void printOutputs() {
  fmt::print("\nResults\n  {:16}{:7}{:22}{:6}{:11}{:10}{}\n", "constant", "bytes", "order", "V4L2",
             "GStreamer", "FFmpeg", "OpenCV");
  for (const OutputNames& n : outputNames())
    fmt::print("  {:16}{:<7}{:22}{:6}{:11}{:10}{}\n", n.constant, n.bytes, n.order, orDash(n.v4l2),
               orDash(n.gstreamer), n.ffmpeg, n.opencv);
}

void printOne(const PixelFormat& f, bool json) {
  if (json) {
    fmt::print("{}\n", asJson(f));
    return;
  }
  printTitle(f.packing);
  print(f);
}

ExitStatus run(const FormatsOptions& o) {
  if (!o.name.empty()) {
    printOne(parsePixelFormat("NAME", o.name), o.json);
  } else if (o.json) {
    fmt::print("{}\n", namesAsJson());
  } else {
    printPhases();
    printRawFormats();
    printOutputs();
  }
  return kDone;
}

}  // namespace

void addFormatsCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("formats", "List the names of phases and formats");
  const auto o = std::make_shared<FormatsOptions>();
  command->add_option("NAME", o->name, "Show only this raw format, by any of its names");
  command->add_flag("--json", o->json, "Print JSON");
  command->footer(kFormatsExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
