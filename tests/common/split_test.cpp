#define VISTREL_BODY "common/simd/split-inl.h"
#include "common/simd/each_level.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Split);

template <class T>
void expectHalves(const std::vector<T>& row, Canvas<T>& even, Canvas<T>& odd) {
  for (size_t k = 0; k < row.size() / 2; ++k) {
    ASSERT_EQ(even.data()[k], row[2 * k]) << k;
    ASSERT_EQ(odd.data()[k], row[2 * k + 1]) << k;
  }
}

template <class T>
void expectSplit(size_t pairs) {
  const std::vector<T> row = noise<T>(2 * pairs, 65535, 1);
  Canvas<T> even(pairs), odd(pairs), evenToo(pairs), oddToo(pairs);
  VISTREL_BY_LEVEL(splitPairs<T>)(row.data(), pairs, even.data(), odd.data());
  expectHalves(row, even, odd);
  VISTREL_BY_LEVEL(splitPairsAndBits<T>)(row.data(), pairs, evenToo.data(), oddToo.data());
  expectHalves(row, evenToo, oddToo);
}

TEST_P(Split, TakesColumnsByTheirParity) {
  for (uint32_t pairs : kWidths) {
    expectSplit<uint8_t>(pairs);
    expectSplit<uint16_t>(pairs);
  }
}

template <class T>
T bitsOf(const std::vector<T>& row) {
  Canvas<T> even(row.size() / 2), odd(row.size() / 2);
  return VISTREL_BY_LEVEL(splitPairsAndBits<T>)(row.data(), row.size() / 2, even.data(),
                                                odd.data());
}

TEST_P(Split, GathersTheBitsOfAllSamples) {
  for (uint32_t pairs : kWidths) {
    EXPECT_EQ(bitsOf(flat<uint16_t>(2 * pairs, 0)), 0);
    EXPECT_EQ(bitsOf(flat<uint16_t>(2 * pairs, 0x0421)), 0x0421);
    for (size_t at : {size_t{0}, size_t{pairs}, size_t{2} * pairs - 1})
      EXPECT_EQ(bitsOf(impulse<uint16_t>(2 * pairs, at, 0x8001)), 0x8001);
  }
  EXPECT_EQ(bitsOf<uint16_t>({1, 2, 4, 0x1000}), 0x1007);
}

TEST_P(Split, GathersNoBitsOfBytes) { EXPECT_EQ(bitsOf(flat<uint8_t>(200, 255)), 0); }

}  // namespace
}  // namespace vistrel::core::test
