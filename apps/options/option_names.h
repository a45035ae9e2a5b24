// The options behind the host layer's arguments.
#pragma once

#include <string>
#include <vector>

#include "apps/error.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// An argument of the host layer, the option that sets it, and the value as typed; empty if it is
// the host layer's own.
struct OptionName {
  std::string argument, option, value;
};
using OptionNames = std::vector<OptionName>;

// "--option VALUE: reason"; the host layer's own message if no option sets the argument.
std::string textOf(const Error& error, const OptionNames& names);

// Calls `action`; an error of the host layer becomes a ProgramError that names the option.
template <class Action>
auto withOptionNames(const OptionNames& names, Action&& action) {
  try {
    return action();
  } catch (const Error& error) {
    throw ProgramError(kRejected, textOf(error, names));
  }
}

}  // namespace vistrel::app
