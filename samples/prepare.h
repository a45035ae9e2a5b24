// Rows of raw samples to the samples that are converted: the significant bits, above the black
// level, balanced, without the lowest bits that the conversion drops.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

constexpr uint32_t kGainOne = 4096;

// Of a row's even and odd columns.
template <class T>
struct ColumnPair {
  T even, odd;
};

struct Preparation {
  uint32_t bits, below;        // significant ones, and how many others are below them
  uint32_t dropped;            // of the significant bits, the lowest
  ColumnPair<uint32_t> black;  // at most 65535
  ColumnPair<uint32_t> gain;   // 1 to 16 * kGainOne

  uint32_t fullScale() const { return (1u << bits) - 1; }
  uint32_t mask() const { return fullScale() << below; }
};

// A sample s becomes
//   min((max((s & mask) >> below, black) - black) * gain / kGainOne, fullScale) >> dropped
// with the quotient rounded to nearest, halves up.
// from: n samples at any alignment; `to` may be the same memory.
template <class T>
void prepareRow(const void* from, size_t n, T* to, const Preparation& how);

}  // namespace vistrel::core
