// Guesses in words, and as options of the program.
#pragma once

#include <string>

#include "apps/tools/guess/guess.h"

namespace vistrel::app {

// "-s 640x480 --bits 12 --phase rggb". Several frames need a folder; the first one shows whether
// the guess is right.
std::string optionsOf(const Guess& guess);

// "0.912  640x480, little, 12 bits, rggb or bggr".
std::string describe(const Guess& guess);

}  // namespace vistrel::app
