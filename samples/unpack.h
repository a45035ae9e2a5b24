// Unpacks rows to samples.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

// How samples are packed into the bytes of a row. Packing::bytes gives bytes, all others give
// 16-bit samples.
//
//   little, big     two bytes per sample, the lower or the upper byte first
//   pfnc            a stream of fields, the lowest bits first
//   gige            two samples in three bytes: upper bits, both samples' lower bits, upper bits
//   mipi            two or four samples: their upper eight bits, then a stream of their lower bits
//
// The last group of a row may have fewer samples. It then ends with the byte of its last bit.
enum class Packing {
  bytes,
  little,
  big,
  pfnc10,
  pfnc12,
  pfnc14,
  gige10,
  gige12,
  mipi10,
  mipi12,
  mipi14
};
constexpr int kPackings = 11;

// Bits from one sample to the next.
constexpr unsigned storedBits(Packing packing) {
  constexpr unsigned bits[kPackings] = {8, 16, 16, 10, 12, 14, 12, 12, 10, 12, 14};
  return bits[static_cast<int>(packing)];
}
constexpr size_t sampleBytes(Packing packing) { return packing == Packing::bytes ? 1 : 2; }

// Eight samples take as many bytes as a sample takes bits.
constexpr uint64_t packedBytes(Packing packing, uint64_t samples) {
  return samples / 8 * storedBits(packing) + (samples % 8 * storedBits(packing) + 7) / 8;
}

// Reads the packedBytes() of a row and writes its samples. Both may have any alignment.
using UnpackRow = void (*)(const uint8_t* row, size_t samples, void* to);

// The function of the current level.
UnpackRow unpackRowOf(Packing packing);

// Samples begin .. end - 1 of a row of `samples`.
void unpackPart(Packing packing, const uint8_t* row, size_t samples, size_t begin, size_t end,
                void* to);

}  // namespace vistrel::core
