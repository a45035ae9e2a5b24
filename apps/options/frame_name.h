// Bits and phase from the name of a file: ..._12b_rggb.pgm, ..._8b_mono.pgm, ..._8b.pgm.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vistrel::app {

struct FrameName {
  uint32_t bits;
  std::optional<uint32_t> phase;  // if one follows the bits
};

// Nothing if the name has no bits.
std::optional<FrameName> findFrameName(std::string_view stem);

// Parses "rggb", "MONO" and so on, or "blue=1,1": the row and column of the blue site. Throws
// ProgramError (usage).
uint32_t parsePhase(std::string_view option, std::string_view text);

}  // namespace vistrel::app
