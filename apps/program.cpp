#include "apps/program.h"

#include <fmt/format.h>

#include <string>

#include "apps/commands/commands.h"
#include "apps/options/help.h"

namespace vistrel::app {
namespace {

constexpr const char* kExamples = R"(Examples:
  vistrel develop rose.dng -o rose.png
  vistrel convert rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel convert --help

)";

}  // namespace

void describeProgram(CLI::App& program, int& status) {
  program.name("vistrel");
  program.description("Raw camera frames to pictures, exact to the sample");
  program.footer(std::string(kExamples) + kExitStatuses);
  setHelp(program);
  program.set_version_flag("--version", "vistrel " VISTREL_PROGRAM_VERSION);
  program.failure_message([](const CLI::App*, const CLI::Error& error) {
    return fmt::format("vistrel: {}\nRun with --help for more information.\n", error.what());
  });
  addAlgorithmsCommand(program, status);
  addBenchCommand(program, status);
  addCfaCommand(program, status);
  addCompareCommand(program, status);
  addConvertCommand(program, status);
  addDevelopCommand(program, status);
  addFormatsCommand(program, status);
  addGuessCommand(program, status);
  addInfoCommand(program, status);
  addMosaicCommand(program, status);
  addReportCommand(program, status);
  addSceneCommand(program, status);
  addSelftestCommand(program, status);
  addUnpackCommand(program, status);
}

}  // namespace vistrel::app
