#include <CLI/CLI.hpp>
#include <cstdio>

#include "apps/failure.h"
#include "apps/output/atomic_file.h"
#include "apps/program.h"

using namespace vistrel::app;

namespace {

std::string commandsOf(const CLI::App& program) {
  std::string names;
  for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; }))
    names += (names.empty() ? "" : ", ") + command->get_name();
  return names;
}

}  // namespace

int main(int argc, char** argv) {
  installSignalHandlers();
  CLI::App program;
  int status = kDone;
  describeProgram(program, status);
  const Outcome outcome = attempt([&] {
    try {
      program.parse(argc, argv);
      if (program.get_subcommands().empty())
        fail(kUsage, "a command is missing: {}; --help tells more", commandsOf(program));
    } catch (const CLI::ParseError& error) {
      status = program.exit(error) == 0 ? kDone : kUsage;
    }
  });
  if (outcome.status == kDone) return status;
  std::fputs(("vistrel: " + outcome.text + "\n").c_str(), stderr);
  return outcome.status;
}
