// Coarse logarithms, and what is looked up by their difference. The second half of this file is
// compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/logarithm_test.cpp"
#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Logarithm);

// Quarters of an octave, with the bias of the exponent.
int biased(uint32_t n) {
  int octave = 0;
  while (n >> octave > 1) ++octave;
  return 4 * (127 + octave) + static_cast<int>(uint64_t{4} * n >> octave) - 4;
}

template <class Result, class T>
std::vector<Result> logarithmsOf(void (*kernel)(Result*, size_t, const T*),
                                 const std::vector<T>& values) {
  std::vector<Result> results(values.size());
  kernel(results.data(), values.size(), values.data());
  return results;
}

TEST_P(Logarithm, OfEvery16BitNumber) {
  std::vector<uint16_t> values(65536);
  for (size_t n = 0; n < values.size(); ++n) values[n] = static_cast<uint16_t>(n);
  const auto logarithms = logarithmsOf(VISTREL_BY_LEVEL(logarithms16), values);
  for (uint32_t n = 1; n < 65536; ++n) ASSERT_EQ(logarithms[n], 32 * biased(n)) << n;
}

TEST_P(Logarithm, OfEveryNumberBelow2To24) {
  std::vector<uint32_t> values(65536);
  for (uint32_t first = 0; first < 1u << 24; first += 65536) {
    for (uint32_t i = 0; i < 65536; ++i) values[i] = first + i;
    const auto logarithms = logarithmsOf(VISTREL_BY_LEVEL(logarithms32), values);
    for (uint32_t i = first == 0; i < 65536; ++i)
      ASSERT_EQ(logarithms[i], biased(first + i)) << first + i;
  }
}

TEST_P(Logarithm, LooksUpEntriesOfATable) {
  expectElements(VISTREL_BY_LEVEL(entries), [](uint8_t i) { return (i & 15) * (i & 15); });
}

TEST_P(Logarithm, GivesNumbersTheSignOfOthers) {
  expectElements(VISTREL_BY_LEVEL(signed16),
                 [](int16_t v, int16_t sign) { return sign < 0 ? -(v >> 1) : v >> 1; });
  expectElements(VISTREL_BY_LEVEL(signed32),
                 [](int32_t v, int32_t sign) { return sign < 0 ? -(v >> 1) : v >> 1; });
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/logarithm-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

inline void logarithms16(int16_t* out, size_t n, const uint16_t* v) {
  for (size_t k = 0; k < n; k += kLanes<uint16_t>) store(out + k, logarithm(load(v + k)));
}
inline void logarithms32(int32_t* out, size_t n, const uint32_t* v) {
  for (size_t k = 0; k < n; k += kLanes<uint32_t>) store(out + k, logarithm(load(v + k)));
}

inline void entries(uint8_t* out, size_t n, const uint8_t* indices) {
  constexpr uint8_t kSquares[16] = {0,  1,  4,   9,   16,  25,  36,  49,
                                    64, 81, 100, 121, 144, 169, 196, 225};
  for (size_t k = 0; k < n; k += kLanes<uint8_t>)
    store(out + k, lookUp(kSquares, load(indices + k) & 15));
}

inline void signed16(int16_t* out, size_t n, const int16_t* v, const int16_t* sign) {
  for (size_t k = 0; k < n; k += kLanes<int16_t>)
    store(out + k, withSign(load(v + k) >> 1, load(sign + k) | 1));
}
inline void signed32(int32_t* out, size_t n, const int32_t* v, const int32_t* sign) {
  for (size_t k = 0; k < n; k += kLanes<int32_t>)
    store(out + k, withSign(load(v + k) >> 1, load(sign + k) | 1));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
