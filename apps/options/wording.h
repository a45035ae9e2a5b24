// The host layer's arguments by the names of the command line.
#pragma once

#include <string>
#include <vector>

#include "apps/failure.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// An argument of the host layer, the option that sets it, and the value as it was typed; an empty
// one is the same as the host layer's.
struct Word {
  std::string argument, option, value;
};
using Wording = std::vector<Word>;

// "--option VALUE: reason"; the host layer's own text where no option sets the argument.
std::string textOf(const Error& error, const Wording& wording);

// Does the work; an error of the host layer becomes a Failure that names options.
template <class Work>
auto inTypedWords(const Wording& wording, Work&& work) {
  try {
    return work();
  } catch (const Error& error) {
    throw Failure(kRejected, textOf(error, wording));
  }
}

}  // namespace vistrel::app
