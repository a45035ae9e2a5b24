// The packings of packed frames, by code and bits.
#pragma once

#include "vistrel/vistrel_host.h"

namespace vistrel::host {

struct Packing {
  uint32_t code;
  const char* name;
  uint32_t minBits, maxBits;
  uint32_t storedBits;  // bits that a sample takes
  void (*unpackRow)(const unsigned char* from, uint64_t samples, unsigned char* to);
};

// Throws Rejection for an unknown packing, and for bits that it does not allow.
const Packing& findPacking(uint32_t code, uint32_t bits);

}  // namespace vistrel::host
