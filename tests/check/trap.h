// Runs a function and survives its faults.
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

// After a fault the function's destructors do not run, so what they would have released leaks.
std::optional<Fault> trapped(const std::function<void()>& function);

// The text that the process prints when a sanitizer, or a signal outside trapped(), ends it.
void setTerminationMessage(const std::string& text);

}  // namespace vistrel::core::check
