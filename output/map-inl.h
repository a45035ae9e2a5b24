// Maps samples through a table of 1024 bytes.
#if defined(VISTREL_MAP_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_MAP_INL_H
#undef VISTREL_MAP_INL_H
#else
#define VISTREL_MAP_INL_H
#endif

#include "output/reduce-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// The table indices of n samples, limited to the last entry.
inline void tableIndices(const uint16_t* __restrict s, uint16_t* __restrict index, size_t n,
                         uint32_t shift) {
  size_t i = 0;
#if VISTREL_SSSE3
  const __m128i count = _mm_cvtsi32_si128(static_cast<int>(shift));
  constexpr size_t step = kRegisterBytes / 2;
  for (; i + step <= n; i += step) storeRegister(index + i, reduced(s + i, count, set1_16(1023)));
#endif
  for (; i < n; ++i) index[i] = atMost<uint16_t>(uint32_t{s[i]} >> shift, 1023);
}

// The entries of eight samples, the first in the lowest byte. They are joined as a tree, since a
// chain of shifts would take longer than the look-ups.
VISTREL_INLINE uint64_t eightEntries(const uint16_t* index, const uint8_t* table) {
  const auto entry = [=](int i) { return uint64_t{table[index[i]]} << (8 * i); };
  return ((entry(0) | entry(1)) | (entry(2) | entry(3))) |
         ((entry(4) | entry(5)) | (entry(6) | entry(7)));
}

// Computes many indices at a time, so that only the look-ups run one by one.
inline void mapSamples(const uint16_t* __restrict s, uint8_t* __restrict d, size_t n,
                       const uint8_t* __restrict table, uint32_t shift) {
  constexpr size_t tile = 512;
  uint16_t index[tile];
  for (size_t begin = 0; begin < n; begin += tile) {
    const size_t count = n - begin < tile ? n - begin : tile;
    tableIndices(s + begin, index, count, shift);
    for (size_t i = 0; i < tile; i += 32) __builtin_prefetch(s + begin + 2 * tile + i);
    size_t i = 0;
    for (; i + 8 <= count; i += 8) {
      const uint64_t eight = eightEntries(index + i, table);
      std::memcpy(d + begin + i, &eight, 8);
    }
    for (; i < count; ++i) d[begin + i] = table[index[i]];
  }
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
