// Finishes pixels for the eye: neutral highlights, colour matrix, and a table for exposure and
// transfer. The formulas are those of vistrel_finish_types.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vistrel::core {

constexpr size_t kFinishEntries = 65536;

// Channels are numbered as they lie in a pixel.
struct Finish {
  size_t channels;                // 1 or 3
  uint32_t bits;                  // of the pixels: 8..16
  std::array<int32_t, 3> clip{};  // where channels clip, in 16 bits; 0: nowhere
  std::array<int32_t, 9> matrix{};
  bool hasMatrix = false;
  size_t sampleBytes;  // of the result
  const void* table;   // kFinishEntries samples of the result
};

// Finishes n pixels of 16-bit samples. Both rows are aligned for their samples.
void finishRow(const uint16_t* pixels, size_t n, const Finish& how, void* result);

// Fills such a table. amplification: in 1/4096, at most 2^28. points: 2..65536 values of the
// transfer curve; null: none.
void fillFinishTable(uint32_t amplification, const uint16_t* points, size_t count,
                     size_t sampleBytes, void* table);

}  // namespace vistrel::core
