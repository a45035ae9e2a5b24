#include "apps/program.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "apps/commands/commands.h"
#include "apps/error.h"
#include "apps/names/nearest_name.h"
#include "apps/options/faults.h"
#include "apps/options/help.h"

namespace vistrel::app {
namespace {

constexpr const char* kExamples = R"(Examples:
  vistrel develop rose.dng -o rose.png
  vistrel convert rose.pgm --phase rggb --bits 12 -o rose.png
  vistrel convert --help

)";

// Rejects a name that is neither an option nor a command.
void checkCommand(const CLI::App& program, const std::string& name) {
  std::vector<std::string> names;
  for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
  if (name.starts_with('-') || std::ranges::count(names, name)) return;
  throwError(kUsage, "{}: there is no such command{}; --help lists them", name,
             nearestText(name, names));
}

}  // namespace

void describeProgram(CLI::App& program, int& status) {
  program.name("vistrel");
  program.description("Raw camera frames to pictures, exact to the sample");
  program.footer(std::string(kExamples) + kExitStatuses);
  setHelp(program);
  program.option_defaults()->disable_flag_override();  // --recursive takes no value
  program.set_version_flag("-V,--version", "vistrel " VISTREL_PROGRAM_VERSION);
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

int runProgram(std::vector<std::string> arguments) {
  CLI::App program;
  int status = kDone;
  describeProgram(program, status);
  if (arguments.empty()) throwError(kUsage, "a command is missing; --help lists them");
  checkCommand(program, arguments[0]);
  std::ranges::reverse(arguments);  // as CLI11 takes them
  try {
    program.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) throwError(kUsage, "{}", faultText(program, error));
    program.exit(error);  // prints the help or the version
    return kDone;
  }
  if (program.get_subcommands().empty())
    throwError(kUsage, "a command is missing; --help lists them");
  return status;
}

}  // namespace vistrel::app
