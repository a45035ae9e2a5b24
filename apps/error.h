// How the program says no: a text for the user and the exit status it leads to.
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

class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& text) : std::runtime_error(text), status_(status) {}
  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

template <class... Args>
[[noreturn]] void fail(ExitStatus status, fmt::format_string<Args...> format, Args&&... args) {
  throw Failure(status, fmt::format(format, std::forward<Args>(args)...));
}

struct Outcome {
  ExitStatus status = kDone;
  std::string text;
};

// What the exception that is handled right now means.
Outcome outcomeOfException();

// Runs `work` and tells what became of it.
template <class Work>
Outcome attempt(Work&& work) {
  try {
    work();
    return {};
  } catch (...) {
    return outcomeOfException();
  }
}

// The outcomes of many inputs.
class Tally {
 public:
  void add(ExitStatus status);
  void leave() { left_ = true; }  // one that was not begun

  // kDone, kSomeFailed, or, where nothing was done, kInputOutput before kRejected; the latter only
  // of all.
  ExitStatus status() const;

 private:
  bool done_ = false, rejected_ = false, inputOutput_ = false, left_ = false;
};

}  // namespace vistrel::app
