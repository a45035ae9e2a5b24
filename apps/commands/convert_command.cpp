#include "apps/commands/commands.h"

#include <zlib.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "apps/batch/batch.h"
#include "apps/commands/conversion_job.h"
#include "apps/error.h"
#include "apps/input/curve_file.h"
#include "apps/input/frame_file.h"
#include "apps/input/frame_names.h"
#include "apps/options/batch_options.h"
#include "apps/options/conversion_options.h"
#include "apps/options/help.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/options/output_format.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {
namespace {

constexpr const char* kConvertExamples = R"(Examples:
  vistrel convert rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel convert frames/*.pgm --phase grbg -j 4 -o pictures/
  vistrel convert cam.raw -s 1280x960 --bits 10 --phase bggr -o cam.png
)";

struct ConvertOptions {
  std::vector<std::string> inputs;
  std::string output, type;
  InputOptions input;
  ConversionOptions conversion;
  BatchOptions batch;
};

// Includes a hash of the curve's table, since the file may change under the same name.
std::string optionsOf(const CLI::App& command, const ConvertOptions& o) {
  std::string options = givenOptions(command, {"Input", "Conversion"});
  const auto& table = o.conversion.tone.table;
  if (!table.empty())
    options += fmt::format(
        " (table {:08x})",
        crc32_z(0, reinterpret_cast<const Bytef*>(table.data()), table.size() * sizeof table[0]));
  return options;
}

BatchTask taskFor(const CLI::App& command, const ConvertOptions& o) {
  BatchTask task;
  const OptionNames names = o.conversion.optionNames();
  task.check = [&o, names](const Job& job) {
    checkWritable(job.to);
    return withOptionNames(names,
                           [&] { return ConversionJob(job, o.input, o.conversion).preview(); });
  };
  task.make = [&o, names](const Job& job, Worker& worker) {
    return withOptionNames(names,
                           [&] { return ConversionJob(job, o.input, o.conversion).run(worker); });
  };
  task.options = optionsOf(command, o);
  if (!o.conversion.tone.table.empty()) task.sources = {o.conversion.tone.curve};
  return task;
}

// Rejects all conflicting options at once.
void checkTogether(const ConvertOptions& o, const std::filesystem::path& first) {
  std::vector<std::string> found = o.conversion.conflicts();
  const auto addConflict = [&](const std::string& option, const char* why) {
    found.push_back(fmt::format("{} and -o {} cannot be combined: {}", option, o.output, why));
  };
  if (!o.type.empty() && !isSameType(pictureType("x." + o.type), pictureType(first)))
    addConflict("--type " + o.type,
                "a picture's name sets its type, --type that of pictures in a folder");
  const char* const report = "standard output is for the picture alone";
  if (isStandardOutput(o.output) && o.batch.json) addConflict("--json", report);
  if (isStandardOutput(o.output) && !o.batch.manifest.empty())
    addConflict("--manifest " + o.batch.manifest, report);
  if (!found.empty()) throwError(kUsage, "{}", fmt::join(found, "\nvistrel: "));
}

ExitStatus run(const CLI::App& command, ConvertOptions& o) {
  const auto start = std::chrono::steady_clock::now();
  o.input.checkWithPhase();
  RunFiles files;
  const auto curve = o.conversion.tone.file();
  if (curve) files.addRead("--curve", *curve);
  const FramesOf framesOf = [&o](const std::filesystem::path& path) {
    return o.input.frame ? 1 : FrameFile(path, o.input).frames();
  };
  const IsFrame isFrame = o.input.size ? isHeaderlessName : isFrameName;
  const std::string extension = "." + (o.type.empty() ? "png" : o.type);
  BatchPlan plan = planJobs({o.inputs, o.output, extension, isFrame, framesOf}, files);
  if (isStandardOutput(o.batch.manifest))
    throwError(kUsage, "--manifest {}: a file name is expected", o.batch.manifest);
  if (!o.batch.manifest.empty()) files.addWritten("--manifest", o.batch.manifest);
  checkTogether(o, plan.jobs.front().to);
  o.conversion.bare = isRawFile(plan.jobs.front().to);
  if (curve) o.conversion.tone.table = readCurve(*curve);
  Batch batch(std::move(plan), o.batch, taskFor(command, o));
  const ExitStatus status = batch.run();
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  if (o.batch.json) printReport(batch, status, seconds.count());
  return status;
}

void addOutputOptions(CLI::App& command, ConvertOptions& o) {
  command.add_option("-o,--output", o.output, "Picture, by its extension; a folder; or - or png:-")
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
  command->footer(std::string(kConvertExamples) + kExitStatuses);
  command->callback([o, command, &status] { status = run(*command, *o); });
}

}  // namespace vistrel::app
