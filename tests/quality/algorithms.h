// The algorithms that are measured.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "tests/quality/planes.h"

namespace vistrel::quality {

struct Algorithm {
  std::string_view name;
  uint32_t code;  // VISTREL_...
};

// Those that take 12 bits.
extern const std::array<Algorithm, 5> kAlgorithms;

// Samples a mosaic of phase RGGB with `bits` significant bits, and demosaics it.
Planes demosaiced(const Planes& light, uint32_t bits, const Algorithm& algorithm);

}  // namespace vistrel::quality
