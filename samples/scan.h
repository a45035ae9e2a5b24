// Searches a row for excess bits, and sums its even and odd columns.
#pragma once

#include <cstddef>
#include <cstdint>

#include "samples/prepare.h"

namespace vistrel::core {

// row: n samples at any alignment. T: uint8_t or uint16_t.

// Whether any sample has an excess bit set.
template <class T>
bool exceeds(const void* row, size_t n, T excess);

// The index of the first sample that has one; n if none has.
template <class T>
size_t firstExceeding(const void* row, size_t n, T excess);

// The sums of max((s & mask) >> below, black) - black over even and odd columns.
template <class T>
ColumnPair<uint64_t> sumsAboveBlack(const void* row, size_t n, const Preparation& how);

}  // namespace vistrel::core
