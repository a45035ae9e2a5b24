// What the samples of a row have in common: bits that they should not have, sums by column.
#pragma once

#include <cstddef>
#include <cstdint>

#include "samples/prepare.h"

namespace vistrel::core {

// row: n samples at any alignment. T: uint8_t or uint16_t.

// Whether a sample has one of the excess bits.
template <class T>
bool exceeds(const void* row, size_t n, T excess);

// The column of the first one that has; n if none has.
template <class T>
size_t firstExceeding(const void* row, size_t n, T excess);

// The sums of max((s & mask) >> below, black) - black.
template <class T>
ColumnPair<uint64_t> sumsAboveBlack(const void* row, size_t n, const Preparation& how);

}  // namespace vistrel::core
