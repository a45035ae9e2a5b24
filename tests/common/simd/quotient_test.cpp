// Exact quotients. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/quotient_test.cpp"
#include <numeric>

#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Quotient);

// Triples of two factors and a divisor, many of whose quotients are whole.
template <class T>
struct Triples {
  std::vector<T> a, b, c;

  explicit Triples(const std::vector<int>& ends) {
    std::vector<int> factors = {1, 2, 3, 5, 6, 7, 9, 10, 11, 49, 98, 103}, divisors(110);
    std::iota(divisors.begin(), divisors.end(), 1);
    for (int end : ends) factors.push_back(end), divisors.push_back(end);
    for (int x : factors)
      for (int y : factors)
        for (int divisor : divisors)
          for (int signs = 0; signs < 8; ++signs)
            add(signs & 1 ? -x : x, signs & 2 ? -y : y, signs & 4 ? -divisor : divisor);
    for (auto* values : {&a, &b, &c}) values->resize(a.size() + 64 - a.size() % 64, T{1});
  }

  void expectQuotients(void (*quotients)(T*, size_t, const T*, const T*, const T*)) const {
    std::vector<T> out(a.size());
    quotients(out.data(), out.size(), a.data(), b.data(), c.data());
    for (size_t i = 0; i < out.size(); ++i)
      ASSERT_EQ(out[i], static_cast<T>(wrapMul(a[i], b[i]) / c[i]))
          << int{a[i]} << " * " << int{b[i]} << " / " << int{c[i]};
  }

 private:
  void add(int x, int y, int divisor) {
    if (wrapMul(x, y) == INT32_MIN && divisor == -1) return;  // out of range
    a.push_back(static_cast<T>(x)), b.push_back(static_cast<T>(y));
    c.push_back(static_cast<T>(divisor));
  }
};

TEST_P(Quotient, OfAProductIsTruncatedAfterTheProductWraps) {
  Triples<int32_t>({4095, 65535, 65537, 1 << 30, INT32_MAX})
      .expectQuotients(VISTREL_BY_LEVEL(quotients<int32_t>));
}

TEST_P(Quotient, OfFactorsBelow4096IsExactInSixteenBitLanes) {
  Triples<int16_t>({1023, 2047, 4093, 4094, 4095})
      .expectQuotients(VISTREL_BY_LEVEL(quotients<int16_t>));
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

template <class T>
void quotients(T* out, size_t n, const T* a, const T* b, const T* c) {
  for (size_t k = 0; k < n; k += kLanes<T>)
    store(out + k, productOver(load(a + k), load(b + k), load(c + k)));
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
