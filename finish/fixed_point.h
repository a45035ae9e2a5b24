// Logarithms, powers and roots in integer arithmetic: the same on every machine.
#pragma once

#include <cstdint>

#include "common/uint128.h"

namespace vistrel::core {

// A number with 64 bits after the point.
using Fixed = Uint128;
constexpr Fixed kFixedOne = Fixed{1} << 64;

// The logarithm of x, 1 to 2^63 - 1, to base 2. Exact for powers of two; otherwise it falls short
// by less than 2^-60.
Fixed fixedLog2(uint64_t x);

// 2^-x. It falls short by less than 2^-60 of itself plus 2^-64.
Fixed fixedExp2Minus(Fixed x);

// The square root of x, less than 2^126, rounded down.
uint64_t rootOf(Uint128 x);

}  // namespace vistrel::core
