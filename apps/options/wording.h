// Refusals of the host layer in the words of the command line.
#pragma once

#include <string>
#include <vector>

#include "apps/error.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// What the host layer calls an argument and its value, and the option that was typed.
struct Word {
  std::string host, typed;
};
using Wording = std::vector<Word>;

// `text` with typed options in place of the host's words, wherever they stand alone.
std::string reworded(std::string text, const Wording& wording);

// Does the work; a refusal of the host layer becomes a ProgramError in the typed words.
template <class Work>
auto inTypedWords(const Wording& wording, Work&& work) {
  try {
    return work();
  } catch (const Error& refusal) {
    throw ProgramError(kRejected, reworded(refusal.what(), wording));
  }
}

}  // namespace vistrel::app
