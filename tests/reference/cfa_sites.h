// Colours of a mosaic by grid code.
#pragma once

namespace reference {

// 'R', 'G' or 'B'. Coordinates may be negative.
inline char colourAt(int grid, int x, int y) {
  static const char* const patterns[4] = {"BGGR", "RGGB", "GBRG", "GRBG"};
  return patterns[grid][2 * (y & 1) + (x & 1)];
}

}  // namespace reference
