#include "finish/finish_rows.h"

#include <algorithm>

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "finish/finish-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {
namespace {

uint32_t interpolated(uint32_t i, const uint16_t* points, size_t count) {
  if (!points) return i;
  const uint32_t p = i * static_cast<uint32_t>(count - 1), k = p / 65535, f = p % 65535;
  if (f == 0) return points[k];
  return (points[k] * (65535 - f) + points[k + 1] * f + 32767) / 65535;
}

}  // namespace

void finishRow(const uint16_t* pixels, size_t n, const Finish& how, void* result) {
  VISTREL_BY_LEVEL(finishRow)(pixels, n, how, result);
}

void fillFinishTable(uint32_t amplification, const uint16_t* points, size_t count,
                     size_t sampleBytes, void* table) {
  for (size_t v = 0; v < kFinishEntries; ++v) {
    const uint64_t amplified = (v * uint64_t{amplification} + 2048) >> 12;
    const uint32_t y =
        interpolated(static_cast<uint32_t>(std::min<uint64_t>(amplified, 65535)), points, count);
    if (sampleBytes == 2)
      static_cast<uint16_t*>(table)[v] = static_cast<uint16_t>(y);
    else
      static_cast<uint8_t*>(table)[v] = static_cast<uint8_t>((y + 128) / 257);
  }
}

}  // namespace vistrel::core
