// The options behind the host layer's arguments.
#pragma once

#include "apps/error.h"
#include "apps/rejection.h"

namespace vistrel::app {

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
