// Sums of products of pairs. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/pairs_test.cpp"
#include "common/simd/each_level.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(PairsOfSamples);

// sum(a, b): of two samples. join: makes the result of two vectors, for every place.
template <class T, class Sum>
void expectSums(void (*join)(const T* a, const T* b, T* sums), unsigned top, Sum sum) {
  const size_t n = *VISTREL_BY_LEVEL(kPairLanes<T>);
  if (n == 0) GTEST_SKIP() << "this level has no such sums";
  const std::vector<T> a = noise<T>(n, top, 1), b = noise<T>(n, top, 2);
  std::vector<T> sums(n), expected(n);
  for (size_t i = 0; i < n; ++i) expected[i] = static_cast<T>(sum(a[i], b[i]));
  join(a.data(), b.data(), sums.data());
  EXPECT_EQ(sums, expected);
}

TEST_P(PairsOfSamples, BytesTakeSignedWeights) {
  expectSums<uint8_t>(VISTREL_BY_LEVEL(weightedBytes), 255,
                      [](int a, int b) { return uint16_t(100 * a - 28 * b + 7140) >> 8; });
}

TEST_P(PairsOfSamples, SixteenBitSamplesBelowTheSign) {
  expectSums<uint16_t>(VISTREL_BY_LEVEL(weightedWide), 32767,
                       [](int a, int b) { return (3 * a + 32000 * b) >> 15; });
}

TEST_P(PairsOfSamples, UpperProductIsTruncated) {
  expectSums<uint16_t>(VISTREL_BY_LEVEL(upperProducts), 65535,
                       [](unsigned a, unsigned) { return a * 50001u >> 16; });
}

TEST_P(PairsOfSamples, RoundedProductRoundsToTheNearest) {
  expectSums<uint16_t>(VISTREL_BY_LEVEL(roundedProducts), 65535,
                       [](unsigned a, unsigned) { return (int16_t(a) * -3298 + 16384) >> 15; });
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/pairs-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_SSSE3
template <class T>
constexpr size_t kPairLanes = kLanes<T>;

inline void weightedBytes(const uint8_t* a, const uint8_t* b, uint8_t* sums) {
  const auto sum = [](Vec<uint8_t> pairs) { return (weighted<100, -28>(pairs) + 7140) >> 8; };
  const Pairs<uint8_t> pairs = pairsOf(load(a), load(b));
  store(sums, packed(sum(pairs.lower), sum(pairs.upper)));
}
inline void weightedWide(const uint16_t* a, const uint16_t* b, uint16_t* sums) {
  const auto sum = [](Vec<uint16_t> pairs) {
    return weighted<3, 32000>(as<Vec<int16_t>>(pairs)) >> 15;
  };
  const Pairs<uint16_t> pairs = pairsOf(load(a), load(b));
  store(sums, packed(sum(pairs.lower), sum(pairs.upper)));
}
inline void upperProducts(const uint16_t* a, const uint16_t*, uint16_t* products) {
  store(products, upperProduct(load(a), 50001));
}
inline void roundedProducts(const uint16_t* a, const uint16_t*, uint16_t* products) {
  store(products, as<Vec<uint16_t>>(roundedProduct(as<Vec<int16_t>>(load(a)), -3298)));
}
#else
template <class T>
constexpr size_t kPairLanes = 0;

inline void weightedBytes(const uint8_t*, const uint8_t*, uint8_t*) {}
inline void weightedWide(const uint16_t*, const uint16_t*, uint16_t*) {}
inline void upperProducts(const uint16_t*, const uint16_t*, uint16_t*) {}
inline void roundedProducts(const uint16_t*, const uint16_t*, uint16_t*) {}
#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
