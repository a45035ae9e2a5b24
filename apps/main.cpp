#include <CLI/CLI.hpp>
#include <cstdio>

#include "apps/commands/compare_command.h"
#include "apps/commands/convert_command.h"
#include "apps/commands/info_command.h"
#include "apps/commands/report_command.h"
#include "apps/commands/scene_command.h"
#include "apps/failure.h"
#include "apps/output/atomic_file.h"

using namespace vistrel::app;

int main(int argc, char** argv) {
  installSignalHandlers();
  CLI::App program("Raw camera frames to pictures, exact to the sample", "vistrel");
  program.set_version_flag("--version", "vistrel " VISTREL_VERSION);
  program.failure_message([](const CLI::App*, const CLI::Error& error) {
    return fmt::format("vistrel: {}\nRun with --help for more information.\n", error.what());
  });
  int status = kDone;
  addCompareCommand(program, status);
  addConvertCommand(program, status);
  addInfoCommand(program, status);
  addReportCommand(program, status);
  addSceneCommand(program, status);
  const Outcome outcome = attempt([&] {
    try {
      program.parse(argc, argv);
      if (program.get_subcommands().empty())
        fail(kUsage,
             "a command is missing: compare, convert, info, report or scene; --help tells more");
    } catch (const CLI::ParseError& error) {
      status = program.exit(error) == 0 ? kDone : kUsage;
    }
  });
  if (outcome.status == kDone) return status;
  std::fputs(("vistrel: " + outcome.text + "\n").c_str(), stderr);
  return outcome.status;
}
