// The whole command line: every command with all its options.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace vistrel::app {

// Adds all commands to `program`. The one that the user gives sets `status` to its exit status.
void describeProgram(CLI::App& program, int& status);

// Runs the command that the arguments, without the program's name, ask for. Returns the exit
// status. Throws ProgramError.
int runProgram(std::vector<std::string> arguments);

}  // namespace vistrel::app
