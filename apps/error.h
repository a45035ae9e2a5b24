// Errors: a message for the user, and the exit status that the program ends with.
#pragma once

#include <fmt/format.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace vistrel::app {

enum ExitStatus {
  kDone = 0,
  kSomeFailed = 1,
  kUsage = 2,
  kRejected = 3,
  kInputOutput = 4,
};

class ProgramError : public std::runtime_error {
 public:
  ProgramError(ExitStatus status, const std::string& text)
      : std::runtime_error(text), status_(status) {}
  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

template <class... Args>
[[noreturn]] void throwError(ExitStatus status, fmt::format_string<Args...> format,
                             Args&&... args) {
  throw ProgramError(status, fmt::format(format, std::forward<Args>(args)...));
}

struct Outcome {
  ExitStatus status = kDone;
  std::string text;
};

// Describes the exception that is being handled.
Outcome outcomeOfException();

// Runs `action` and catches what it throws.
template <class Action>
Outcome attempt(Action&& action) {
  try {
    action();
    return {};
  } catch (...) {
    return outcomeOfException();
  }
}

// The exit status of a run over many inputs.
class ExitStatusSum {
 public:
  void add(ExitStatus status);
  void addSkipped() { skipped_ = true; }  // for an input that was not started

  // kDone if nothing failed and kSomeFailed if some inputs succeeded. If none did: kInputOutput if
  // a file could not be read or written, kRejected if all inputs were rejected.
  ExitStatus status() const;

 private:
  bool done_ = false, rejected_ = false, inputOutput_ = false, skipped_ = false;
};

}  // namespace vistrel::app
