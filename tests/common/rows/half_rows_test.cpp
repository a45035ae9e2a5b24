#include "common/rows/half_rows.h"

#include "tests/arena.h"
#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

template <class T>
void expectSeparateHalves(unsigned rows, unsigned halves, size_t columns) {
  Memory memory;
  const HalfRowRing<T> ring(rows, halves, columns, memory);
  const ptrdiff_t n = static_cast<ptrdiff_t>(columns + 1) / 2;
  for (unsigned y = 0; y < rows; ++y)
    for (unsigned which = 0; which < halves; ++which)  // the guards too
      std::fill(ring.half(y, which) - 1, ring.half(y, which) + n + 1,
                static_cast<T>(1 + y * halves + which));
  for (unsigned y = 0; y < rows; ++y)
    for (unsigned which = 0; which < halves; ++which) {
      const T* half = ring.half(y, which);
      EXPECT_EQ(std::count(half - 1, half + n + 1, static_cast<T>(1 + y * halves + which)), n + 2);
    }
}

TEST(HalfRowRing, HasRoomForEveryHalfAndItsGuards) {
  for (uint32_t columns : kWidths) {
    expectSeparateHalves<uint8_t>(3, 2, columns);
    expectSeparateHalves<uint16_t>(4, 1, columns);
    expectSeparateHalves<int32_t>(1, 4, columns);
  }
}

TEST(HalfRowRing, ReusesTheRowsOfARoundBefore) {
  Memory memory;
  const HalfRowRing<uint8_t> ring(5, 2, 40, memory);
  for (unsigned y = 0; y < 5; ++y) {
    EXPECT_EQ(ring.half(y + 5, 1), ring.half(y, 1));
    EXPECT_EQ(ring.half(y + 45, 0), ring.half(y, 0));
    EXPECT_NE(ring.half(y + 1, 0), ring.half(y, 0));
  }
}

// What the widest vector, of 64 bytes, reads or writes past the end lies in memory, and is zero.
TEST(HalfRowRing, IsZeroAtFirstWithSlackForAVector) {
  for (uint32_t columns : kWidths) {
    Memory memory;
    const HalfRowRing<uint16_t> ring(2, 2, columns, memory);
    for (unsigned y = 0; y < 2; ++y)
      for (unsigned which = 0; which < 2; ++which) {
        const uint16_t* half = ring.half(y, which);
        EXPECT_EQ(std::count(half - 1, half + (columns + 1) / 2 + 32, 0), (columns + 1) / 2 + 33);
      }
  }
}

TEST(HalfRowRing, AlignsHalvesForTheWidestVector) {
  Memory memory;
  const HalfRowRing<uint8_t> ring(3, 2, 77, memory);
  for (unsigned y = 0; y < 3; ++y)
    for (unsigned which = 0; which < 2; ++which)
      EXPECT_EQ(reinterpret_cast<uintptr_t>(ring.half(y, which)) % 64, 0u);
}

TEST(HalfRowWindow, HoldsTheRowsAroundItsOwn) {
  Memory memory;
  const HalfRowRing<uint8_t> ring(8, 2, 20, memory);
  const auto window =
      windowOf<2>(4, [&](int y, unsigned parity) { return ring.half(unsigned(y), parity); });
  for (int dy = -2; dy <= 2; ++dy)
    for (unsigned parity = 0; parity < 2; ++parity)
      EXPECT_EQ(window.half[dy + 2][parity], ring.half(unsigned(4 + dy), parity));
}

}  // namespace
}  // namespace vistrel::core::test
