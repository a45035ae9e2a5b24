// What a file's name tells of the frame: ..._12b_rggb.pgm, ..._8b.pgm.
#pragma once

#include <cstdint>
#include <string_view>

namespace vistrel::app {

struct FrameName {
  uint32_t bits;
  uint32_t phase;  // VISTREL_MONO where no phase follows the bits
};

// Throws Failure (rejected) where the name does not tell.
FrameName parseFrameName(std::string_view stem);

// The code of "rggb", "MONO" and so on, or of "blue=1,1", the blue site's row and column. Throws
// Failure (usage).
uint32_t parsePhase(std::string_view option, std::string_view text);

}  // namespace vistrel::app
