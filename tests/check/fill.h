// What a call finds in its memory.
#pragma once

#include "tests/check/block.h"
#include "tests/check/call.h"

namespace vistrel::core::check {

// Noise, the same wherever the block lies.
void fillWithNoise(const Block& block, uint64_t seed);

// The call's frame of samples of `bits` bits, 0 standing for all that a sample has. The columns
// are counted from where the block's address would be.
void fillWithFrame(const Block& block, const Call& call, size_t sampleBytes, uint32_t bits);

void copyRows(const Block& from, const Block& to);

}  // namespace vistrel::core::check
