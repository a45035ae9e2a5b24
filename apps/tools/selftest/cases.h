// The conversions that the selftest plays. A generator in tests/selftest plays the same ones
// through the reference and writes the hashes, golden.inl.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vistrel::app::selftest {

constexpr uint32_t kWidth = 203, kHeight = 37;  // rows longer than any vector, with a rest

struct Case {
  std::string algorithm;  // "mono" for frames without filters
  uint32_t code;          // VISTREL_BILINEAR to VISTREL_AHD
  uint32_t threshold;
  uint32_t bits;  // 8: bytes, else words
  uint32_t phase;
  uint32_t binning;
  uint32_t lutMode;  // a window or a curve; kAllBits: none
};
constexpr uint32_t kAllBits = ~0u;

// "vng, 10 bits, gbrg, binning 1"
std::string nameOf(const Case& c);

std::vector<Case> allCases();

// Flat, steep, quiet, noisy and saturated places, by integer arithmetic alone.
std::vector<uint16_t> testFrame(uint32_t bits);

// FNV-1a, 64 bits, of samples of one or two bytes; of words the low byte first.
uint64_t hashOf(const uint8_t* samples, size_t count);
uint64_t hashOf(const uint16_t* samples, size_t count);

}  // namespace vistrel::app::selftest
