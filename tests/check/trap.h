// Runs a function and survives it when it touches what it may not.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vistrel::core::check {

struct Fault {
  int signal;
  const uint8_t* address;
};

// What the function's destructors would have released stays: a fault ends the case.
std::optional<Fault> trapped(const std::function<void()>& function);

// A text for the last words of a process that a sanitizer or a signal outside a trap ends.
void setLastWords(const std::string& text);

}  // namespace vistrel::core::check
