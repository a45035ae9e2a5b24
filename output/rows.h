// The kernels of the output: each writes one row of output pixels from the N source rows of its
// blocks. They are compiled once for each instruction-set level.
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

// Samples are shifted right by `shift` before they are added; results are limited to `ceiling`.
struct Reduction {
  uint32_t shift, ceiling;
};

// The difference of bits may be negative: it wraps and counts modulo 32. The ceiling is truncated
// to the width of the sample.
template <class Sample>
constexpr Reduction reductionOf(uint32_t nSrcBits, uint32_t nDstBits, uint32_t nShiftAdjust) {
  return {(nSrcBits - nDstBits - nShiftAdjust) & 31, static_cast<Sample>(shl(1, nDstBits) - 1)};
}

// source points to the first sample of the row's first block. stride: distance between two source
// rows, in samples. width: output pixels.
using RowKernel = void (*)(const void* source, size_t stride, void* destination, size_t width,
                           Reduction reduction);

// Maps n samples through a table of 1024 bytes, indexed by sample >> shift.
using MapKernel = void (*)(const uint16_t* source, uint8_t* destination, size_t n,
                           const uint8_t* table, uint32_t shift);

struct RowKernels {
  RowKernel row[kPacks][kDepths][kMaxBinning];
  MapKernel map;
};

// The kernels of the current level.
const RowKernels& rowKernels();

}  // namespace vistrel::core
