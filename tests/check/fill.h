// Fills the memory that a call works on.
#pragma once

#include "tests/check/block.h"
#include "tests/check/call.h"

namespace vistrel::core::check {

// Fills the block with noise that does not depend on where the block lies.
void fillWithNoise(const Block& block, uint64_t seed);

// Fills the block with the call's frame, of samples of `bits` bits (0: all bits that a sample has).
// Columns are counted from where the block's address would be.
void fillWithFrame(const Block& block, const Call& call, size_t sampleBytes, uint32_t bits);

void copyRows(const Block& from, const Block& to);

}  // namespace vistrel::core::check
