#include "apps/commands/convert_command.h"

#include <zlib.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "apps/batch/batch.h"
#include "apps/batch/batch_report.h"
#include "apps/failure.h"
#include "apps/input/frame_file.h"
#include "apps/input/frame_names.h"
#include "apps/options/batch_options.h"
#include "apps/options/conversion_options.h"
#include "apps/options/help.h"
#include "apps/options/options.h"
#include "apps/output/picture.h"

namespace vistrel::app {
namespace {

constexpr const char* kExamples = R"(Examples:
  vistrel convert rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel convert frames/*.pgm --phase grbg -j 4 -o pictures/
  vistrel convert cam.raw -s 1280x960 --bits 10 --phase bggr -o cam.png
)";

struct ConvertOptions {
  std::vector<std::string> inputs;
  std::string output, type = "png";
  InputOptions input;
  ConversionOptions conversion;
  BatchOptions batch;
};

// A job's frame, its header read, and what is to become of it.
struct Opened {
  Opened(const Job& job, const ConvertOptions& o)
      : file(job.from, o.input), conversion(o.conversion.of(file.frame())),
        type(pictureType(job.to)), layout(layoutOf(file.frame(), conversion)) {
    if (type.channels && type.channels != layout.channels)
      fail(kRejected, "a {} frame does not fit {}; use {} or .png",
           vistrel_phase_name(file.frame().phase), job.to.string(),
           layout.channels == 1 ? ".pgm" : ".ppm");
  }

  Prospect prospect() const { return {layout, file.remarks()}; }

  FrameFile file;
  vistrel_conversion conversion;
  const PictureType& type;
  vistrel_layout layout;
};

Made makePicture(const Job& job, const ConvertOptions& o, Desk& desk) {
  Opened opened(job, o);
  const vistrel_frame& frame = job.frame ? opened.file.read(*job.frame) : opened.file.read();
  const Image& image = desk.convert(frame, opened.conversion);
  AtomicFile output(job.to);
  opened.type.write(image, output);
  output.commit();
  const auto crc = crc32_z(0, image.pixels.data(), image.pixels.size());
  return {opened.prospect(), static_cast<uint32_t>(crc)};
}

// A curve of the user's may change while its name stays.
std::string optionsOf(const CLI::App& command, const ConvertOptions& o) {
  std::string options = givenOptions(command, {"Input", "Conversion"});
  const auto& table = o.conversion.tone.table;
  if (!table.empty())
    options += fmt::format(
        " (table {:08x})",
        crc32_z(0, reinterpret_cast<const Bytef*>(table.data()), table.size() * sizeof table[0]));
  return options;
}

Work workFor(const CLI::App& command, const ConvertOptions& o) {
  Work work;
  work.check = [&o](const Job& job) {
    checkWritable(job.to);
    return Opened(job, o).prospect();
  };
  work.make = [&o](const Job& job, Desk& desk) { return makePicture(job, o, desk); };
  work.options = optionsOf(command, o);
  if (!o.conversion.tone.table.empty()) work.sources = {o.conversion.tone.curve};
  return work;
}

ExitStatus run(const CLI::App& command, ConvertOptions& o) {
  const auto start = std::chrono::steady_clock::now();
  o.input.checkWithPhase();
  RunFiles files;
  if (const auto curve = o.conversion.tone.file()) files.addRead("--curve", *curve);
  const FramesOf framesOf = [&o](const std::filesystem::path& path) {
    return o.input.frame ? 1 : FrameFile(path, o.input).frames();
  };
  const IsFrame isFrame = o.input.size ? isDumpName : isFrameName;
  Plan plan = planJobs({o.inputs, o.output, "." + o.type, isFrame, framesOf}, files);
  if (isStandardOutput(o.batch.manifest))
    fail(kUsage, "--manifest {}: the name of a file is expected", o.batch.manifest);
  if (!o.batch.manifest.empty()) files.addWritten("--manifest", o.batch.manifest);
  o.conversion.load(plan.jobs.front().to);
  if (isStandardOutput(o.output) && (o.batch.json || !o.batch.manifest.empty()))
    fail(kUsage, "-o {}: --json and --manifest do not go with it", o.output);
  Batch batch(std::move(plan), o.batch, workFor(command, o));
  const ExitStatus status = batch.run();
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  if (o.batch.json) printReport(batch, status, seconds.count());
  return status;
}

void addOutputOptions(CLI::App& command, ConvertOptions& o) {
  command.add_option("-o,--output", o.output, "Picture, by its ending; a folder; or - or png:-")
      ->required()
      ->type_name("OUT");
  oneOf(command.add_option("--type", o.type, "png, tiff, pam, ppm, pgm or raw, in a folder (png)"),
        {"png", "tiff", "pam", "ppm", "pgm", "raw"})
      ->type_name("TYPE");
}

}  // namespace

void addConvertCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("convert", "Turn raw frames into pictures");
  const auto o = std::make_shared<ConvertOptions>();
  command->add_option("IN", o->inputs, "Frames, or folders of them")->required();
  inGroup(*command, "Input", [&] { addPhaseOption(*command, o->input.phase); });
  addInputOptions(*command, o->input);
  inGroup(*command, "Conversion", [&] { addConversionOptions(*command, o->conversion); });
  inGroup(*command, "Output", [&] { addOutputOptions(*command, *o); });
  inGroup(*command, "Batch", [&] { addBatchOptions(*command, o->batch); });
  command->footer(std::string(kExamples) + kExitStatuses);
  command->callback([o, command, &status] { status = run(*command, *o); });
}

}  // namespace vistrel::app
