// The conversions that the selftest runs. A generator in tests/apps/tools/selftest runs the same
// ones through the reference implementation and writes the hashes to golden.inl.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace vistrel::app::selftest {

constexpr uint32_t kWidth = 203,
                   kHeight = 37;  // rows longer than any vector, and not a multiple of one

struct Case {
  std::string algorithm;  // "mono" for frames without filters
  uint32_t code;          // VISTREL_BILINEAR to VISTREL_DIRECTIONAL
  uint32_t threshold;
  uint32_t bits;  // 8: 8-bit samples, otherwise 16-bit ones
  uint32_t phase;
  uint32_t binning;
  uint32_t reduction;   // a window or a curve; kAllBits: none
  uint32_t finish = 0;  // the number of a finishing stage; 0: none
};
constexpr uint32_t kAllBits = ~0u;

// "vng, 10 bits, gbrg, binning 1"
std::string nameOf(const Case& c);

std::vector<Case> allCases();

// Finishes a conversion of such a frame: every part of the stage is in one of three. The conversion
// refers to the object.
class Finishing {
 public:
  Finishing(const Case& c, vistrel_conversion& conversion);
  Finishing(const Finishing&) = delete;
  Finishing& operator=(const Finishing&) = delete;

 private:
  std::vector<uint16_t> transfer_, dark_, flat_;
  std::vector<vistrel_point> hot_;
  vistrel_calibration calibration_{};
  vistrel_finish finish_{};
};

// A frame with flat, steep, quiet, noisy and saturated areas, from integer arithmetic alone.
std::vector<uint16_t> testFrame(uint32_t bits);

// 64-bit FNV-1a of 8-bit or 16-bit samples; of the latter in little-endian order.
uint64_t hashOf(const uint8_t* samples, size_t count);
uint64_t hashOf(const uint16_t* samples, size_t count);

}  // namespace vistrel::app::selftest
