// The program's commands. Each function adds one to `program`; if the user gives that command,
// `status` receives its exit status.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

void addAlgorithmsCommand(CLI::App& program, int& status);
void addBenchCommand(CLI::App& program, int& status);
void addCfaCommand(CLI::App& program, int& status);
void addCompareCommand(CLI::App& program, int& status);
void addConvertCommand(CLI::App& program, int& status);
void addDevelopCommand(CLI::App& program, int& status);
void addFormatsCommand(CLI::App& program, int& status);
void addGuessCommand(CLI::App& program, int& status);
void addInfoCommand(CLI::App& program, int& status);
void addMosaicCommand(CLI::App& program, int& status);
void addReportCommand(CLI::App& program, int& status);
void addSceneCommand(CLI::App& program, int& status);
void addSelftestCommand(CLI::App& program, int& status);
void addUnpackCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
