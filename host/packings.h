// The packings of packed frames, by code and bits.
#pragma once

#include "samples/unpack.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// Throws Rejection for an unknown packing, and for bits that it does not allow.
core::Packing findPacking(uint32_t code, uint32_t bits);

}  // namespace vistrel::host
