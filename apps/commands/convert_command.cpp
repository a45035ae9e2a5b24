#include "apps/commands/convert_command.h"

#include <memory>
#include <string>
#include <vector>

#include "apps/batch/jobs.h"
#include "apps/batch/progress.h"
#include "apps/failure.h"
#include "apps/input/frame_file.h"
#include "apps/options/conversion_options.h"
#include "apps/options/help.h"
#include "apps/options/options.h"
#include "apps/output/picture.h"

namespace vistrel::app {
namespace {

constexpr const char* kExamples = R"(Examples:
  vistrel convert rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel convert frames/*.pgm --phase grbg -o pictures/
  vistrel convert cam.raw -s 1280x960 --bits 10 --phase bggr -o cam.png
A picture shows the samples as they are: linear, without white balance.
Exit status: 0 all done, 1 some inputs failed, 2 usage, 3 all inputs rejected,
4 a file could not be read or written, 130 interrupted)";

struct ConvertOptions {
  std::vector<std::string> inputs;
  std::string output;
  InputOptions input;
  ConversionOptions conversion;
};

void convertOne(const Job& job, const ConvertOptions& o) {
  FrameFile input(job.from, o.input);
  const vistrel_conversion conversion = o.conversion.of(input.frame());
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

ExitStatus run(ConvertOptions& o) {
  o.input.checkWithPhase();
  o.conversion.load(o.output);
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

}  // namespace

void addConvertCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("convert", "Turn raw frames into pictures");
  const auto o = std::make_shared<ConvertOptions>();
  command->add_option("IN", o->inputs, "Frames: binary PGM, or dumps with --size")->required();
  inGroup(*command, "Input", [&] { addPhaseOption(*command, o->input.phase); });
  addInputOptions(*command, o->input);
  inGroup(*command, "Conversion", [&] { addConversionOptions(*command, o->conversion); });
  inGroup(*command, "Output", [&] {
    command->add_option("-o,--output", o->output, "Picture (.png, .ppm, .pgm), or folder for PNGs")
        ->required()
        ->type_name("OUT");
  });
  command->footer(kExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
