#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "apps/error.h"
#include "apps/files/atomic_file.h"
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
  } catch (const CLI::RequiredError& error) {
    // A word that nobody expected may be why another one is missing.
    const std::vector<std::string> strange = program.remaining(true);
    program.exit(strange.empty() ? static_cast<const CLI::ParseError&>(error)
                                 : CLI::ExtrasError(strange));
    return kUsage;
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? kDone : kUsage;
  }
  if (program.get_subcommands().empty())
    throwError(kUsage, "a command is missing; --help lists them");
  return status;
}

// A stream that the caller closed must not become a file that is opened here; what is read from it
// or written to it still fails.
void keepStandardDescriptors() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_PATH);
}

// A full disk or a closed stream may not show before the last of the output goes out.
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
