// The significant bits of a frame's samples. Samples with other bits set are rejected.
#pragma once

#include <cstring>
#include <optional>

#include "host/packings.h"
#include "host/status.h"
#include "samples/scan.h"

namespace vistrel::host {

template <class T>
struct Significant {
  explicit Significant(const vistrel_frame& frame)
      : unused(8 * sizeof(T) - frame.bits),
        below(frame.alignment == VISTREL_HIGH_BITS ? unused : 0),
        bits(static_cast<T>(((1u << frame.bits) - 1) << below)),
        others(isTight(frame.packing) ? T{0} : static_cast<T>(~bits)),
        isSwapped(!isTight(frame.packing) && packingOf(frame)) {}

  // Whether a sample of the row has other bits set.
  bool exceeded(const void* row, size_t n) const {
    return others && core::exceeds<T>(row, n, inRow(others));
  }

  // Throws Rejection for the first sample of the row that has, if any. columnOf(i): the column of
  // sample i in the frame.
  template <class ColumnOf>
  void rejectExcess(const void* row, size_t n, uint32_t y, ColumnOf columnOf) const {
    if (!exceeded(row, n)) return;
    const size_t i = core::firstExceeding<T>(row, n, inRow(others));
    T sample;
    std::memcpy(&sample, static_cast<const char*>(row) + i * sizeof sample, sizeof sample);
    rejectSample(inRow(sample), columnOf(i), y);
  }

  uint32_t unused, below;  // how many bits are not significant; how many of them are lowest
  T bits, others;          // the significant ones, and the others
  bool isSwapped;          // the bytes of a sample in memory

 private:
  T inRow(T sample) const { return isSwapped ? static_cast<T>(__builtin_bswap16(sample)) : sample; }

  [[noreturn]] void rejectSample(T sample, uint32_t x, uint32_t y) const {
    const auto value = textOf("{} at column {}, row {}", sample, x, y);
    const uint32_t count = 8 * sizeof(T) - unused;
    if (below)
      reject(VISTREL_EXCESS_SAMPLE, "frame.samples", value,
             "the lowest {} of 16 bits are 0 in samples of {} high bits", below, count);
    reject(VISTREL_EXCESS_SAMPLE, "frame.samples", value, "samples of {} bits are at most {}",
           count, bits);
  }
};

}  // namespace vistrel::host
