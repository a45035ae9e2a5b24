// Compares what a call has left behind and describes the first difference.
#pragma once

#include <optional>
#include <string>

#include "tests/check/subject.h"
#include "tests/check/trap.h"

namespace vistrel::core::check {

enum class Kind { fault, result, source, destination, work, outside };

struct Failure {
  Kind kind;
  std::string text;
};

// Where in the call's memory a fault happened.
std::string place(const Memory& memory, const Fault& fault);

// The first byte outside the blocks that changed.
std::optional<Failure> findCorruption(const Memory& memory, uint8_t canary, const char* side);

// The first sample that differs.
std::optional<Failure> difference(const Layout& layout, const Memory& got, const Memory& expected);

}  // namespace vistrel::core::check
