#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/files/interrupts.h"
#include "apps/program.h"

using namespace vistrel::app;

namespace {

// The arguments after the program's name. `help convert` is `convert --help`.
std::vector<std::string> argumentsOf(int argc, char** argv) {
  std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
  if (arguments.empty() || arguments[0] != "help") return arguments;
  arguments.erase(arguments.begin());
  arguments.insert(arguments.begin() + !arguments.empty(), "--help");
  return arguments;
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
    status = runProgram(argumentsOf(argc, argv));
    finishStandardOutput();
  });
  if (outcome.status == kDone) return status;
  std::fprintf(stderr, "vistrel: %s\n", outcome.text.c_str());
  return outcome.status;
}
