// The significant bits of a frame's samples, and the refusal of others.
#pragma once

#include "host/status.h"

namespace vistrel::host {

template <class T>
struct Significant {
  explicit Significant(const vistrel_frame& frame)
      : unused(8 * sizeof(T) - frame.bits),
        below(frame.alignment == VISTREL_HIGH_BITS ? unused : 0),
        bits(static_cast<T>(((1u << frame.bits) - 1) << below)) {}

  // Whether a sample of the row has others.
  bool exceeded(const T* row, size_t n) const {
    T all = 0;
    if (unused)
      for (size_t i = 0; i < n; ++i) all |= row[i];
    return (all & ~bits) != 0;
  }
  bool exceeded(T sample) const { return exceeded(&sample, 1); }

  [[noreturn]] void refuseSample(T sample, uint32_t x, uint32_t y) const {
    const auto place = fmt::format("sample {} at column {}, row {}", sample, x, y);
    const uint32_t count = 8 * sizeof(T) - unused;
    if (below)
      refuse(VISTREL_EXCESS_SAMPLE, "{}: a frame of {} high bits has samples whose {} lowest are 0",
             place, count, below);
    refuse(VISTREL_EXCESS_SAMPLE, "{}: a frame of {} bits has samples of at most {}", place, count,
           bits);
  }

  uint32_t unused, below;  // bits that are not significant, and those of them below the others
  T bits;                  // the significant ones
};

}  // namespace vistrel::host
