// The packings of packed frames, by code and bits.
#pragma once

#include <optional>
#include <string_view>

#include "samples/unpack.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// Throws Rejection for an unknown packing, or for bits that it does not allow. structure: the
// struct with these fields; zero: what packing 0 means in it, for messages.
core::Packing findPacking(uint32_t code, uint32_t bits, std::string_view structure,
                          std::string_view zero);

// How to unpack a frame's rows; nothing if they hold this machine's samples. The frame must have
// passed all checks.
std::optional<core::Packing> packingOf(const vistrel_frame& frame);

// Whether all bits of the packed samples are significant.
inline bool isTight(uint32_t packing) { return packing > VISTREL_PACKING_BIG; }

}  // namespace vistrel::host
