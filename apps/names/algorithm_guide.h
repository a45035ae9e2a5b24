// What each demosaic algorithm is for, and how well and how fast it does it.
#pragma once

#include <cstdint>

namespace vistrel::app {

struct AlgorithmGuide {
  uint32_t code;       // VISTREL_BILINEAR to VISTREL_DIRECTIONAL
  const char* use;     // in words
  double cpsnr;        // dB
  double nanoseconds;  // per pixel
};

// Null for an algorithm that only a newer library has.
const AlgorithmGuide* guideTo(uint32_t code);

}  // namespace vistrel::app
