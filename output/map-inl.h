// Maps samples through a table of 1024 bytes.
#if defined(VISTREL_MAP_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_MAP_INL_H
#undef VISTREL_MAP_INL_H
#else
#define VISTREL_MAP_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "output/reduce-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// The table indices of n samples, limited to the last entry.
inline void tableIndices(const uint16_t* __restrict s, uint16_t* __restrict index, size_t n,
                         uint32_t shift) {
  size_t i = 0;
#if VISTREL_PERMUTES
  const ShiftCount count = shiftCount(shift);
  constexpr size_t step = kRegisterBytes / 2;
  for (; i + step <= n; i += step) storeRegister(index + i, reduced(s + i, count, set1_16(1023)));
#endif
  for (; i < n; ++i) index[i] = atMost<uint16_t>(uint32_t{s[i]} >> shift, 1023);
}

// The entries of eight samples, in order in memory. They are joined as a tree, since a
// chain of shifts would take longer than the look-ups.
VISTREL_INLINE uint64_t eightEntries(const uint16_t* index, const uint8_t* table) {
  const auto entry = [=](int i) {
    return uint64_t{table[index[i]]} << 8 * (kFirstIsLow ? i : 7 - i);
  };
  return ((entry(0) | entry(1)) | (entry(2) | entry(3))) |
         ((entry(4) | entry(5)) | (entry(6) | entry(7)));
}

#if VISTREL_AVX512

// The positions of the low bytes of 64 numbers of 16 bits.
struct LowBytes {
  alignas(64) uint8_t places[64];
  constexpr LowBytes() : places() {
    for (int i = 0; i < 64; ++i) places[i] = static_cast<uint8_t>(2 * i);
  }
};
constexpr LowBytes kLowBytes;

// The whole table in sixteen registers.
class TableRegisters {
 public:
  explicit TableRegisters(const uint8_t* table) {
    for (int i = 0; i < 16; ++i) entries_[i] = _mm512_loadu_si512(table + 64 * i);
  }

  // The entries of 64 indices; each operand holds 32 of them.
  VISTREL_INLINE __m512i operator()(__m512i low, __m512i high) const {
    const __m512i bytes = _mm512_permutex2var_epi8(low, _mm512_load_si512(kLowBytes.places), high);
    __m512i found[8];
    for (int i = 0; i < 8; ++i)
      found[i] = _mm512_permutex2var_epi8(entries_[2 * i], bytes, entries_[2 * i + 1]);
    for (int bit = 7, n = 4; n > 0; ++bit, n /= 2) {
      const __m512i isSet = _mm512_set1_epi16(static_cast<short>(1 << bit));
      const __mmask64 upper = uint64_t{_mm512_test_epi16_mask(high, isSet)} << 32;
      const __mmask64 mask = upper | _mm512_test_epi16_mask(low, isSet);
      for (int i = 0; i < n; ++i)
        found[i] = _mm512_mask_blend_epi8(mask, found[2 * i], found[2 * i + 1]);
    }
    return found[0];
  }

 private:
  __m512i entries_[16];
};

VISTREL_INLINE __m512i tableIndices(const uint16_t* s, __m128i shift) {
  return _mm512_min_epu16(_mm512_srl_epi16(_mm512_loadu_si512(s), shift), _mm512_set1_epi16(1023));
}

// Maps 64 samples at a time, and returns how many it has mapped.
inline size_t mapVectors(const uint16_t* __restrict s, uint8_t* __restrict d, size_t n,
                         const uint8_t* table, uint32_t shift) {
  if (n < 64) return 0;
  const TableRegisters entries(table);
  const __m128i count = _mm_cvtsi32_si128(static_cast<int>(shift));
  size_t i = 0;
  for (; i + 64 <= n; i += 64)
    _mm512_storeu_si512(d + i,
                        entries(tableIndices(s + i, count), tableIndices(s + i + 32, count)));
  return i;
}

#else

inline size_t mapVectors(const uint16_t*, uint8_t*, size_t, const uint8_t*, uint32_t) { return 0; }

#endif

// Computes many indices at a time, so that only the look-ups run one by one.
inline void mapSamples(const uint16_t* __restrict s, uint8_t* __restrict d, size_t n,
                       const uint8_t* __restrict table, uint32_t shift) {
  constexpr size_t tile = 512;
  uint16_t index[tile];
  for (size_t begin = mapVectors(s, d, n, table, shift); begin < n; begin += tile) {
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
