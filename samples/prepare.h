// Turns rows of raw samples into those that are converted: takes the significant bits, subtracts
// the black level, applies gains, and drops the lowest bits that the conversion truncates.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

constexpr uint32_t kGainOne = 4096;

// One value for even columns, one for odd columns.
template <class T>
struct ColumnPair {
  T even, odd;
};

struct Preparation {
  uint32_t bits, below;        // number of significant bits, and of those below them
  uint32_t dropped;            // number of lowest significant bits that are dropped
  ColumnPair<uint32_t> black;  // at most 65535
  ColumnPair<uint32_t> gain;   // 1 to 16 * kGainOne

  uint32_t fullScale() const { return (1u << bits) - 1; }
  uint32_t mask() const { return fullScale() << below; }
};

// A sample s becomes
//   min((max((s & mask) >> below, black) - black) * gain / kGainOne, fullScale) >> dropped
// with the quotient rounded to nearest, halves up. `from` has n samples at any alignment; `to` may
// be the same memory.
template <class T>
void prepareRow(const void* from, size_t n, T* to, const Preparation& how);

}  // namespace vistrel::core
