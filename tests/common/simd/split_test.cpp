#define VISTREL_BODY "common/simd/split-inl.h"
#include "common/simd/each_level.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Split);

template <class T, class Lane>
void expectHalves(const std::vector<T>& row, Canvas<Lane>& even, Canvas<Lane>& odd) {
  for (size_t x = 0; x < row.size(); ++x)
    ASSERT_EQ((x % 2 == 0 ? even : odd).data()[x / 2], row[x]) << x << " of " << row.size();
}

template <class T>
void expectSplit(size_t columns) {
  const std::vector<T> row = noise<T>(columns, 65535, 1);
  const size_t ofEven = (columns + 1) / 2, ofOdd = columns / 2;
  Canvas<T> even(ofEven), odd(ofOdd), evenToo(ofEven), oddToo(ofOdd);
  VISTREL_BY_LEVEL(splitRow<T>)(row.data(), columns, even.data(), odd.data());
  expectHalves(row, even, odd);
  VISTREL_BY_LEVEL(splitRowAndBits<T>)(row.data(), columns, evenToo.data(), oddToo.data());
  expectHalves(row, evenToo, oddToo);
}

TEST_P(Split, TakesColumnsByTheirParity) {
  for (uint32_t columns : kWidths) {
    expectSplit<uint8_t>(columns);
    expectSplit<uint16_t>(columns);
  }
}

template <class T, class Lane>
void expectSplitInto(size_t columns) {
  const std::vector<T> row = noise<T>(columns, 4095, 2);
  Canvas<Lane> even((columns + 1) / 2), odd(columns / 2);
  VISTREL_BY_LEVEL(splitRow<T, Lane>)(row.data(), columns, even.data(), odd.data());
  expectHalves(row, even, odd);
}

TEST_P(Split, GivesSamplesOtherTypes) {
  for (uint32_t columns : kWidths) {
    expectSplitInto<uint8_t, int16_t>(columns);
    expectSplitInto<uint16_t, int16_t>(columns);
    expectSplitInto<uint16_t, int32_t>(columns);
  }
}

template <class T>
T bitsOf(const std::vector<T>& row) {
  Canvas<T> even((row.size() + 1) / 2), odd(row.size() / 2);
  return VISTREL_BY_LEVEL(splitRowAndBits<T>)(row.data(), row.size(), even.data(), odd.data());
}

TEST_P(Split, GathersTheBitsOfAllSamples) {
  for (uint32_t columns : kWidths) {
    EXPECT_EQ(bitsOf(flat<uint16_t>(columns, 0)), 0);
    EXPECT_EQ(bitsOf(flat<uint16_t>(columns, 0x0421)), 0x0421);
    for (uint32_t x = 0; x < columns; ++x)
      EXPECT_EQ(bitsOf(impulse<uint16_t>(columns, x, 0x8001)), 0x8001) << x << " of " << columns;
  }
  EXPECT_EQ(bitsOf<uint16_t>({1, 2, 4, 0x1000}), 0x1007);
}

TEST_P(Split, GathersNoBitsOfBytes) { EXPECT_EQ(bitsOf(flat<uint8_t>(200, 255)), 0); }

}  // namespace
}  // namespace vistrel::core::test
