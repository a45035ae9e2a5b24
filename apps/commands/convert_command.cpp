#include "apps/commands/commands.h"

#include <zlib.h>

#include <memory>
#include <string>
#include <vector>

#include "apps/commands/conversion_job.h"
#include "apps/commands/mosaic_job.h"
#include "apps/commands/picture_request.h"
#include "apps/error.h"
#include "apps/input/curve_file.h"
#include "apps/options/conversion_options.h"
#include "apps/options/help.h"

namespace vistrel::app {
namespace {

constexpr const char* kConvertExamples = R"(Examples:
  vistrel convert rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel convert frames/*.pgm --phase grbg -j 4 -o pictures/
  vistrel convert cam.raw -s 1280x960 --pixfmt BayerRG12p --mosaic -o cam.dng
)";

struct ConvertOptions : PictureRequest {
  ConversionOptions conversion;
};

// Includes a hash of the curve's table, since the file may change under the same name.
std::string optionsOf(const CLI::App& command, const ConvertOptions& o) {
  std::string options = givenForPictures(command, "Conversion");
  const auto& table = o.conversion.tone.table;
  if (!table.empty())
    options += fmt::format(
        " (table {:08x})",
        crc32_z(0, reinterpret_cast<const Bytef*>(table.data()), table.size() * sizeof table[0]));
  return options;
}

// --mosaic leaves nothing to convert.
void checkMosaic(const CLI::App& command) {
  const std::string others = givenOptions(command, {"Conversion"}, {"--mosaic"});
  if (!others.empty())
    throwError(kUsage, "--mosaic and {} cannot be combined: samples stay as they are", others);
}

BatchTask taskFor(const CLI::App& command, const ConvertOptions& o, const ConversionRun& run) {
  BatchTask task;
  task.open = [&o, &run](const Job& job, Preview& preview) -> std::unique_ptr<OpenJob> {
    if (!o.mosaic) return std::make_unique<ConversionJob>(job, run, preview);
    return std::make_unique<MosaicJob>(job, run.input, run.compression, run.given, preview);
  };
  task.names = o.conversion.optionNames();
  task.options = optionsOf(command, o);
  task.sources = o.conversion.calibration.files();
  if (!o.conversion.tone.table.empty()) task.sources.push_back(o.conversion.tone.curve);
  return task;
}

ExitStatus run(const CLI::App& command, ConvertOptions& o) {
  o.mosaic ? o.input.check() : o.input.checkWithPhase();
  if (o.mosaic) checkMosaic(command);
  RunFiles files;
  const auto curve = o.conversion.tone.file();
  if (curve) files.addRead("--curve", *curve);
  addReadFiles(o.conversion.calibration, files);
  BatchPlan plan = o.plan(files);
  o.conversion.output = outputKind(plan.jobs.front().to);
  std::vector<std::string> conflicts = o.conversion.conflicts();
  const auto more = o.conflicts(plan.jobs.front().to);
  conflicts.insert(conflicts.end(), more.begin(), more.end());
  rejectConflicts(conflicts);
  if (curve) o.conversion.tone.table = readCurve(*curve);
  const SensorCalibration calibration(o.conversion.calibration, o.input);
  addWarnings(calibration, plan);
  const ConversionRun run{o.input, o.conversion, calibration, compressionOf(o.compression),
                          givenForPictures(command, "Conversion")};
  return o.run(std::move(plan), taskFor(command, o, run));
}

}  // namespace

void addConvertCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("convert", "Turn raw frames into exact, linear pictures");
  const auto o = std::make_shared<ConvertOptions>();
  addPictureInputs(*command, *o);
  inGroup(*command, "Conversion", [&] {
    command->add_flag("--mosaic", o->mosaic, "Don't demosaic: write raw frames (.dng, .pgm, ...)");
    addConversionOptions(*command, o->conversion);
  });
  addPictureOutputs(*command, *o)->required();
  command->footer(std::string(kConvertExamples) + kExitStatuses);
  command->callback([o, command, &status] { status = run(*command, *o); });
}

}  // namespace vistrel::app
