#include "apps/commands/commands.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/input/frame_file.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/tools/report/stopwatch.h"
#include "apps/tools/scene/sensor.h"

namespace vistrel::app {
namespace {

constexpr const char* kBenchExamples = R"(Examples:
  vistrel bench
  vistrel bench rose.pgm --phase rggb --bits 12 -a bilinear -a ahd --rounds 25

Converts the frame by every algorithm to BGR of 8 bits per sample, at every
instruction set level of this machine: once per round, on one thread, with all
checks. The table shows nanoseconds per pixel: the fastest of all rounds, and
the median. If the frame has more bits than an algorithm supports, its lowest
bits are dropped first. The default frame is the test scene: 1024x768, 8 bits.)";

struct BenchOptions {
  std::string path;
  InputOptions input;
  std::vector<AlgorithmChoice> algorithms;
  int rounds = 11;
  bool json = false;
};

void printText(const vistrel_frame& frame, const std::vector<Timing>& timings, int rounds) {
  fmt::print("{}x{} pixels, {} bits, {}; ns/pixel, fastest (median) of {} rounds\n{:14}",
             frame.width, frame.height, frame.bits, vistrel_phase_name(frame.phase), rounds, "");
  for (size_t level = 0; const char* name = vistrel_level_name(level); ++level)
    fmt::print(" {:>16}", name);
  const auto isFirst = [&](const Timing& t) { return t.level == timings[0].level; };
  for (const Timing& row : timings) {
    if (!isFirst(row)) break;
    const std::string label = labelOf(row.algorithm);
    fmt::print("\n  {:<12}", label);
    for (const Timing& t : timings)
      if (labelOf(t.algorithm) == label)
        fmt::print(" {:7.3f} ({:6.3f})", t.nsPerPixel, t.medianNsPerPixel);
  }
  fmt::print("\n");
}

void printJson(const vistrel_frame& frame, const std::vector<Timing>& timings, int rounds) {
  nlohmann::ordered_json json{{"version", VISTREL_PROGRAM_VERSION},
                              {"width", frame.width},
                              {"height", frame.height},
                              {"bits", frame.bits},
                              {"phase", vistrel_phase_name(frame.phase)},
                              {"rounds", rounds},
                              {"timings", nlohmann::ordered_json::array()}};
  for (const Timing& t : timings)
    json["timings"].push_back({{"algorithm", labelOf(t.algorithm)},
                               {"level", t.level},
                               {"bits", t.bits},
                               {"ns_per_pixel", t.nsPerPixel},
                               {"median_ns_per_pixel", t.medianNsPerPixel}});
  fmt::print("{}\n", json.dump(2));
}

void benchFrame(const vistrel_frame& frame, const BenchOptions& o) {
  if (frame.phase == VISTREL_MONO)
    throwError(kRejected, "a mono frame: there is nothing to demosaic");
  const std::vector<Timing> timings = timeAll(frame, orAll(o.algorithms), o.rounds);
  o.json ? printJson(frame, timings, o.rounds) : printText(frame, timings, o.rounds);
}

ExitStatus run(BenchOptions& o) {
  if (o.path.empty()) {
    const Scene scene(1024, 768, "VISTREL");
    const Image image = expose(scene, 1024, 768, {8, VISTREL_RGGB, 0.5, 1});
    benchFrame(frameOf(image.pixels, 1024, 768, VISTREL_RGGB), o);
    return kDone;
  }
  o.input.checkWithPhase();
  const Outcome outcome = attempt([&o] {
    PrintedWarnings warnings(o.path);
    FrameFile file(o.path, o.input, warnings.list());
    benchFrame(file.read(), o);
  });
  if (outcome.status != kDone) throw ProgramError(outcome.status, o.path + ": " + outcome.text);
  return kDone;
}

}  // namespace

void addBenchCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("bench", "Time every algorithm on this machine");
  const auto o = std::make_shared<BenchOptions>();
  command->add_option("FRAME", o->path, "Frame to convert (the test scene)");
  addAlgorithmsOption(*command, o->algorithms);
  between(command->add_option("--rounds", o->rounds, "Number of rounds (11)"), 1, 10000);
  command->add_flag("--json", o->json, "Print JSON");
  addPhaseOption(*command, o->input.phase);
  addInputOptions(*command, o->input);
  command->footer(kBenchExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
