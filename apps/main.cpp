#include <CLI/CLI.hpp>
#include <cstdio>

#include "apps/failure.h"
#include "apps/output/atomic_file.h"
#include "apps/program.h"

using namespace vistrel::app;

namespace {

// The exit status of the command that the command line names.
int run(int argc, char** argv) {
  CLI::App program;
  int status = kDone;
  describeProgram(program, status);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? kDone : kUsage;
  }
  if (program.get_subcommands().empty()) fail(kUsage, "a command is missing; --help lists them");
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  installSignalHandlers();
  int status = kDone;
  const Outcome outcome = attempt([&] { status = run(argc, argv); });
  if (outcome.status == kDone) return status;
  std::fprintf(stderr, "vistrel: %s\n", outcome.text.c_str());
  return outcome.status;
}
