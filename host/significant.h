// The significant bits of a frame's samples, and the rejection of samples with others.
#pragma once

#include "host/status.h"

namespace vistrel::host {

template <class T>
struct Significant {
  explicit Significant(const vistrel_frame& frame)
      : unused(8 * sizeof(T) - frame.bits),
        below(frame.alignment == VISTREL_HIGH_BITS ? unused : 0),
        bits(static_cast<T>(((1u << frame.bits) - 1) << below)) {}

  // Whether a sample of the row has other bits set.
  bool exceeded(const T* row, size_t n) const {
    T all = 0;
    if (unused)
      for (size_t i = 0; i < n; ++i) all |= row[i];
    return (all & ~bits) != 0;
  }
  bool exceeded(T sample) const { return exceeded(&sample, 1); }

  [[noreturn]] void rejectSample(T sample, uint32_t x, uint32_t y) const {
    const auto value = fmt::format("{} at column {}, row {}", sample, x, y);
    const uint32_t count = 8 * sizeof(T) - unused;
    if (below)
      reject(VISTREL_EXCESS_SAMPLE, "frame.samples", value,
             "the lowest {} of 16 bits are 0 in samples of {} high bits", below, count);
    reject(VISTREL_EXCESS_SAMPLE, "frame.samples", value, "samples of {} bits are at most {}",
           count, bits);
  }

  uint32_t unused, below;  // bits that are not significant, and how many of them are lowest
  T bits;                  // the significant ones
};

}  // namespace vistrel::host
