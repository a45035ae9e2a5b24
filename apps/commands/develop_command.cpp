#include "apps/commands/commands.h"

#include <memory>
#include <string>
#include <vector>

#include "apps/commands/development_job.h"
#include "apps/commands/picture_request.h"
#include "apps/error.h"
#include "apps/options/help.h"

namespace vistrel::app {
namespace {

constexpr const char* kDevelopExamples = R"(Examples:
  vistrel develop rose.dng
  vistrel develop rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel develop night/*.fits --look astro --same -o pictures/
  vistrel develop rose.dng --look exposure=1.5,curve=srgb -o rose.png
)";

struct DevelopRequest : PictureRequest {
  DevelopOptions development;
};

OptionNames optionNames(const DevelopOptions& o) {
  OptionNames names = o.conversion.optionNames();
  const OptionNames more = lookOptionNames();
  names.insert(names.end(), more.begin(), more.end());
  return names;
}

BatchTask taskFor(const CLI::App& command, const DevelopRequest& o,
                  const Development& development) {
  BatchTask task;
  task.open = [&development](const Job& job, Preview& preview) {
    return std::make_unique<DevelopmentJob>(job, development, preview);
  };
  task.names = optionNames(o.development);
  task.options = "develop " + givenForPictures(command, "Development");
  task.sources = o.development.conversion.calibration.files();
  return task;
}

ExitStatus run(const CLI::App& command, DevelopRequest& o) {
  o.input.checkWithPhase();
  RunFiles files;
  ConversionOptions& conversion = o.development.conversion;
  addReadFiles(conversion.calibration, files);
  BatchPlan plan = o.plan(files);
  conversion.output = outputKind(plan.jobs.front().to);
  std::vector<std::string> conflicts = conversion.conflicts();
  const auto more = o.conflicts(plan.jobs.front().to);
  conflicts.insert(conflicts.end(), more.begin(), more.end());
  rejectConflicts(conflicts);
  // The others are part of what is decided.
  const std::string given = givenForPictures(
      command, "Development", {"--algorithm", "--look", "--same", "--roi", "--orient"});
  Development development(o.input, o.development, compressionOf(o.compression), given);
  addWarnings(development.calibration(), plan);
  withOptionNames(optionNames(o.development), [&] { development.lookAt(plan, o.batch.keepGoing); });
  return o.run(std::move(plan), taskFor(command, o, development));
}

}  // namespace

void addDevelopCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("develop", "Make pictures for the eye of raw frames");
  const auto o = std::make_shared<DevelopRequest>();
  addPictureInputs(*command, *o);
  inGroup(*command, "Development", [&] { addDevelopmentOptions(*command, o->development); });
  addPictureOutputs(*command, *o);
  command->footer(std::string(kDevelopExamples) + kExitStatuses);
  command->callback([o, command, &status] { status = run(*command, *o); });
}

}  // namespace vistrel::app
