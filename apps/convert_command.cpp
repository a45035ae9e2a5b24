#include "apps/convert_command.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/failure.h"
#include "apps/jobs.h"
#include "apps/options.h"
#include "apps/picture.h"
#include "apps/progress.h"

namespace vistrel::app {
namespace {

constexpr const char* kExamples = R"(Examples:
  vistrel convert rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel convert frames/*.pgm --phase grbg -o pictures/
  vistrel convert cam.raw -s 1280x960 --bits 10 --phase bggr --curve 4 -o cam.png
  vistrel convert star_16b.pgm --from-name --bin 2 --roi 400x300+100+80 --depth 16 -o star.png

A picture shows the sensor's samples as they are: linear, without white balance.
Brighten it with --window, --curve or --bin.

Exit status: 0 all done, 1 some inputs failed, 2 usage, 3 all inputs rejected,
4 a file could not be read or written.)";

struct ConvertOptions {
  std::vector<std::string> inputs;
  std::string output;
  InputOptions input;
  uint32_t algorithm = DM_BILINEAR;
  uint32_t binning = 1;
  std::optional<vistrel_region> region;
  std::optional<uint32_t> window;
  std::optional<uint32_t> curve;
  uint32_t depth = 8;
  bool mask = false;
};

vistrel_conversion conversionOf(const vistrel_frame& frame, const ConvertOptions& o) {
  vistrel_conversion c = defaultConversion(frame);
  if (o.depth == 16) c.format = frame.phase == VISTREL_MONO ? IMG_FMT_MONO16 : IMG_FMT_BGR48;
  c.algorithm = o.algorithm;
  c.binning = o.binning;
  c.lut_mode = o.curve ? *o.curve + 1 : o.window.value_or(0);
  c.excess = o.mask ? VISTREL_MASK : VISTREL_REFUSE;
  c.region = o.region ? &*o.region : nullptr;
  return c;
}

void convertOne(const Job& job, const ConvertOptions& o) {
  FrameFile input(job.from, o.input);
  const vistrel_conversion conversion = conversionOf(input.frame(), o);
  const PictureType& type = pictureType(job.to);
  const uint32_t channels = layoutOf(input.frame(), conversion).channels;
  if (type.channels && type.channels != channels)
    fail(kRejected, "a {} frame does not fit {}; use {} or .png",
         vistrel_phase_name(input.frame().phase), job.to.string(), channels == 1 ? ".pgm" : ".ppm");
  const Image image = convert(input.read(), conversion);
  AtomicFile output(job.to);
  type.write(image, output);
  output.commit();
}

void checkOptions(const ConvertOptions& o) {
  o.input.check();
  if (!o.input.phase && !o.input.fromName)
    fail(kUsage,
         "--phase is missing. It names the colours of the 2x2 block at the frame's left upper "
         "corner: rggb, bggr, grbg or gbrg; mono stands for a frame without colour filters. "
         "With --from-name the file's name tells it");
  if (o.depth == 16 && (o.window || o.curve))
    fail(kUsage, "--depth 16 keeps all bits: --window and --curve do not go with it");
}

ExitStatus run(const ConvertOptions& o) {
  checkOptions(o);
  const std::vector<Job> jobs = planJobs(o.inputs, o.output);
  Progress progress(jobs.size());
  Tally tally;
  for (const Job& job : jobs) {
    const Outcome outcome = attempt([&] { convertOne(job, o); });
    if (outcome.status != kDone)
      progress.say(fmt::format("{}: {}", job.from.string(), outcome.text));
    tally.add(outcome.status);
    progress.step();
  }
  return tally.status();
}

void addAlgorithmOption(CLI::App& command, uint32_t& code) {
  std::vector<std::string> names;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    names.push_back(a->name);
  const auto choose = [names, &code](const std::string& name) {
    const auto place = std::find(names.begin(), names.end(), name) - names.begin();
    code = vistrel_algorithm_at(static_cast<size_t>(place))->code;
  };
  oneOf(command.add_option_function<std::string>("-a,--algorithm", choose,
                                                 "Demosaic algorithm (bilinear)"),
        names);
}

void addConversionOptions(CLI::App& command, ConvertOptions& o) {
  addPhaseOption(command, o.input.phase);
  addAlgorithmOption(command, o.algorithm);
  command
      .add_option_function<std::string>(
          "--roi", [&o](const std::string& s) { o.region = parseRegion("--roi", s); },
          "Region in sensor pixels; its size is rounded down to whole bins")
      ->type_name("WxH+X+Y");
  between(command.add_option("--bin", o.binning, "Sum blocks of so many pixels either way (1)"), 1,
          4);
  auto* window =
      between(command.add_option("--window", o.window,
                                 "Which 8 bits are kept: the highest, one or two places lower (0)"),
              0, 2);
  between(command.add_option("--curve", o.curve, "Tone curve in place of a window, from 10 bits"),
          2, 6)
      ->excludes(window);
  oneOf(command.add_option("--depth", o.depth, "Bits of a sample in the picture (8)"), {"8", "16"});
  command.add_flag("--mask", o.mask, "Drop bits above the significant ones; else refuse the frame");
}

}  // namespace

void addConvertCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("convert", "Turn raw frames into pictures");
  const auto o = std::make_shared<ConvertOptions>();
  command->add_option("IN", o->inputs, "Frames: binary PGM, or dumps with --size")->required();
  command->add_option("-o,--output", o->output, "Picture (.png, .ppm, .pgm), or folder for PNGs")
      ->required()
      ->type_name("OUT");
  addConversionOptions(*command, *o);
  addInputOptions(*command, o->input);
  command->footer(kExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
