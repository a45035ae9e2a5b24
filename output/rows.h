// One row of output pixels from the N source rows behind it: the kernels of this room, compiled
// once for each instruction-set level.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/arith.h"

namespace vistrel::core {

enum class Pack { mono, bgr, argb, gray };
enum class Depth { from8to8, from16to8, from16to16 };
template <class From, class To>
constexpr Depth depthOf() {
  if (sizeof(From) == 1) return Depth::from8to8;
  return sizeof(To) == 1 ? Depth::from16to8 : Depth::from16to16;
}

constexpr int kPacks = 4, kDepths = 3, kMaxBinning = 4;

// Each sample is shifted right by `shift` before the sum; a result above `ceiling` becomes it.
struct Reduction {
  uint32_t shift, ceiling;
};

// A difference of bits may be negative: it wraps, and counts modulo 32. The ceiling is cut to
// the width of the sample.
template <class Sample>
constexpr Reduction reductionOf(uint32_t nSrcBits, uint32_t nDstBits, uint32_t nShiftAdjust) {
  return {(nSrcBits - nDstBits - nShiftAdjust) & 31, static_cast<Sample>(shl(1, nDstBits) - 1)};
}

// source: the first sample of the row's first block; stride: distance of two source rows, in
// samples; width: output pixels.
using RowFunction = void (*)(const void* source, size_t stride, void* destination, size_t width,
                             Reduction reduction);

// Maps n samples through a table of 1024 bytes, indexed by sample >> shift.
using MapFunction = void (*)(const uint16_t* source, uint8_t* destination, size_t n,
                             const uint8_t* table, uint32_t shift);

struct RowTable {
  RowFunction row[kPacks][kDepths][kMaxBinning];
  MapFunction map;
};

// The kernels of the current level.
const RowTable& rowTable();

}  // namespace vistrel::core
