// The directional demosaic of docs/directional.md, for the whole image at once.
#pragma once

#include <cstdint>
#include <vector>

namespace reference {

// A mosaic of 8 to 16 significant bits, at least 2x2. grid: a CFA_GRID_ code (cfa.h).
struct DirectionalFrame {
  int width, height, bits, grid;
  std::vector<uint16_t> samples;
};

// Red, green and blue of each pixel.
std::vector<uint16_t> demosaicDirectional(const DirectionalFrame& frame);

// The logarithm of a roughness, in quarters of an octave; n is at least 1.
int directionalLog(int n);

// The blend of a and b, whose roughness has the logarithms la and lb.
int directionalBlend(int a, int b, int la, int lb);

}  // namespace reference
