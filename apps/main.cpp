#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "apps/error.h"
#include "apps/files/atomic_file.h"
#include "apps/names/nearest_name.h"
#include "apps/program.h"

using namespace vistrel::app;

namespace {

// Rejects a first argument that is neither an option nor a command.
void checkCommand(const CLI::App& program, const char* name) {
  std::vector<std::string> names;
  for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
  if (!name || *name == '-' || std::ranges::count(names, name)) return;
  const std::string nearest = nearestName(name, names);
  throwError(kUsage, "{}: there is no such command{}; --help lists them", name,
             nearest.empty() ? "" : "; the nearest is " + nearest);
}

// Runs the command on the command line and returns its exit status.
int run(int argc, char** argv) {
  CLI::App program;
  int status = kDone;
  describeProgram(program, status);
  checkCommand(program, argc > 1 ? argv[1] : nullptr);
  try {
    program.parse(argc, argv);
  } catch (const CLI::RequiredError& error) {
    // An unexpected argument may be the reason why a required one is missing.
    const std::vector<std::string> unexpected = program.remaining(true);
    program.exit(unexpected.empty() ? static_cast<const CLI::ParseError&>(error)
                                    : CLI::ExtrasError(unexpected));
    return kUsage;
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? kDone : kUsage;
  }
  if (program.get_subcommands().empty())
    throwError(kUsage, "a command is missing; --help lists them");
  return status;
}

// If the caller closed a standard descriptor, no file opened later may take its number. Reading
// from it or writing to it still fails.
void keepStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", O_PATH);
}

// A full disk or a closed standard output may only show when the last output is flushed.
void finishStandardOutput() {
  if (std::fflush(stdout) != 0)
    throwError(kInputOutput, "standard output cannot be written: {}", std::strerror(errno));
  if (std::ferror(stdout)) throwError(kInputOutput, "standard output cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
  keepStandardDescriptors();
  installSignalHandlers();
  int status = kDone;
  const Outcome outcome = attempt([&] {
    status = run(argc, argv);
    finishStandardOutput();
  });
  if (outcome.status == kDone) return status;
  std::fprintf(stderr, "vistrel: %s\n", outcome.text.c_str());
  return outcome.status;
}
