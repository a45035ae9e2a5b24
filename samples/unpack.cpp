#include "samples/unpack.h"

#include <algorithm>
#include <cstring>

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "samples/unpack-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

UnpackRow unpackRowOf(Packing packing) {
  return (*VISTREL_BY_LEVEL(kUnpackRows))[static_cast<int>(packing)];
}

// Eight samples fill whole bytes, and whole groups.
void unpackPart(Packing packing, const uint8_t* row, size_t samples, size_t begin, size_t end,
                void* to) {
  const UnpackRow unpack = unpackRowOf(packing);
  const size_t size = sampleBytes(packing);
  auto* d = static_cast<uint8_t*>(to);
  for (size_t n; begin < end; begin += n, d += n * size) {
    const size_t skipped = begin % 8, first = begin - skipped;
    const uint8_t* const from = row + packedBytes(packing, first);
    n = end == samples ? end - begin : (end - begin) / 8 * 8;
    if (skipped == 0 && n > 0) {
      unpack(from, n, d);
    } else {
      uint8_t eight[16];
      const size_t has = std::min<size_t>(samples - first, 8);
      unpack(from, has, eight);
      n = std::min(end - first, has) - skipped;
      std::memcpy(d, eight + skipped * size, n * size);
    }
  }
}

}  // namespace vistrel::core
