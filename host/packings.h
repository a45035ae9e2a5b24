// The packings of dumps, by code and bits.
#pragma once

#include "vistrel/vistrel_host.h"

namespace vistrel::host {

struct Packing {
  uint32_t code;
  const char* name;
  uint32_t leastBits, mostBits;
  uint32_t storedBits;  // that a sample takes
  void (*unpackRow)(const unsigned char* from, uint64_t samples, unsigned char* to);
};

// Throws Refusal for a packing that there is not, and for bits that it has not.
const Packing& findPacking(uint32_t code, uint32_t bits);

}  // namespace vistrel::host
