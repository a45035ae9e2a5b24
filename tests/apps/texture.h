// Samples of 12 bits that resemble no neighbour.
#pragma once

#include <cstdint>

namespace vistrel {

inline uint32_t texture(uint32_t x, uint32_t y) {
  return (x * x * 3 + 7 * x * y + (x ^ y) * 29) % 4096;
}

}  // namespace vistrel
