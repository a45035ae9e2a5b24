// The names of the five phases in each convention.
#pragma once

#include <array>
#include <cstdint>

namespace vistrel::app {

// Null or empty if a convention has nothing for frames without colour filters.
struct PhaseNames {
  uint32_t phase;  // VISTREL_GRBG to VISTREL_MONO: the index in the table
  const char* constant;
  const char* name;         // ours
  const char* block;        // rows of the 2x2 block
  const char* pfnc;         // prefix of pixel format names
  const char* opencv;       // named after the block at row 1, column 1; shown, never parsed
  const char* fits;         // BAYERPAT
  const char* dng;          // CFAPattern: 0 red, 1 green, 2 blue
  std::array<int, 2> blue;  // row and column of the blue site
};

inline constexpr uint32_t kBayerPhases = 4, kPhases = 5;  // mono comes last

const PhaseNames& phaseNames(uint32_t phase);

// The phase whose 2x2 block has these colours, row by row: VISTREL_RED, VISTREL_GREEN,
// VISTREL_BLUE. VISTREL_MONO if there is none.
uint32_t phaseOfBlock(const std::array<uint32_t, 4>& colours);

// The colour of the filter at (x, y), counted as in a BGR pixel: 0 blue, 1 green, 2 red. `phase` is
// not VISTREL_MONO.
uint32_t channelAt(uint32_t phase, uint32_t x, uint32_t y);

}  // namespace vistrel::app
