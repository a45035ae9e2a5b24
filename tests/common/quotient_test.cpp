// Exact quotients. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/quotient_test.cpp"
#include <algorithm>

#include "common/simd/each_level.h"
#include "tests/common/elements.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Quotient);

// The kernels below bring their operands into the range that is served: no divisor is 0, and none
// of 32 bits is -1, which would take the lowest product out of range.
TEST_P(Quotient, OfAProductIsTruncatedAfterTheProductWraps) {
  expectElements(VISTREL_BY_LEVEL(quotients32),
                 [](int32_t a, int32_t b, int32_t c) { return wrapMul(a, b) / ((c & ~2) | 1); });
}

TEST_P(Quotient, OfAProductIsExactInSixteenBitLanes) {
  const auto limited = [](int v) { return std::max((v & 8191) - 4096, -4095); };
  expectElements(VISTREL_BY_LEVEL(quotients16),
                 [=](int a, int b, int c) { return limited(a) * limited(b) / (limited(c) | 1); });
}

TEST(QuotientFormula, ServesSingleSamples) {
  EXPECT_EQ(base::productOver(7, 3, 4), 5);
  EXPECT_EQ(base::productOver(-7, 3, 4), -5);
  EXPECT_EQ(base::productOver(65536, 65536, 3), 0);  // 2^32
  EXPECT_EQ(base::productOver(65537, 65537, 2), 65536);
}

// Every numerator from -most up to `most`.
template <class T>
void expectShares(void (*shares)(T* out, size_t n, const T* a, int divisor), int most) {
  const size_t n = 2 * static_cast<size_t>(most);
  std::vector<T> numerators(n + kElements), out(n + kElements);
  for (size_t i = 0; i <= n; ++i) numerators[i] = static_cast<T>(static_cast<int>(i) - most);
  for (int divisor = 1; divisor <= 8; ++divisor) {
    shares(out.data(), n + 1, numerators.data(), divisor);
    for (size_t i = 0; i <= n; ++i)
      ASSERT_EQ(out[i], static_cast<T>(numerators[i] / divisor)) << numerators[i] << ' ' << divisor;
  }
}

TEST_P(Quotient, ByUpToEightIsExactOfSumsOfEightSamples) {
  expectShares(VISTREL_BY_LEVEL(shares32), 8 * 65535);
  expectShares(VISTREL_BY_LEVEL(sharesOfSamples), 8 * 65535);
}

TEST_P(Quotient, ByUpToEightIsExactInSixteenBitLanes) {
  expectShares(VISTREL_BY_LEVEL(shares16), 32767);
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/quotient-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

inline void quotients32(int32_t* out, size_t n, const int32_t* a, const int32_t* b,
                        const int32_t* c) {
  for (size_t k = 0; k < n; k += kLanes<int32_t>)
    store(out + k, productOver(load(a + k), load(b + k), (load(c + k) & ~2) | 1));
}
VISTREL_INLINE Vec<int16_t> loadLimited(const int16_t* p) {
  return larger((load(p) & 8191) - 4096, Vec<int16_t>{} - int16_t{4095});
}
inline void quotients16(int16_t* out, size_t n, const int16_t* a, const int16_t* b,
                        const int16_t* c) {
  for (size_t k = 0; k < n; k += kLanes<int16_t>)
    store(out + k, productOver(loadLimited(a + k), loadLimited(b + k), loadLimited(c + k) | 1));
}

// Quotients by one divisor.
template <class T>
void sharesOf(T* out, size_t n, const T* a, int divisor) {
  const auto r = reciprocal(Vec<T>{} + static_cast<T>(divisor));
  for (size_t k = 0; k < n; k += kLanes<T>) store(out + k, product(load(a + k), r));
}
inline void shares32(int32_t* out, size_t n, const int32_t* a, int divisor) {
  sharesOf(out, n, a, divisor);
}
inline void shares16(int16_t* out, size_t n, const int16_t* a, int divisor) {
  sharesOf(out, n, a, divisor);
}
inline void sharesOfSamples(int32_t* out, size_t n, const int32_t* a, int divisor) {
  for (size_t k = 0; k < n; ++k) out[k] = product(a[k], reciprocal(divisor));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
