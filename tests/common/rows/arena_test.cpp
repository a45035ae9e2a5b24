#include "common/rows/arena.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/sanitizer.h"

namespace vistrel::core::test {
namespace {

TEST(Arena, HandsOutOnePlaceAfterTheOther) {
  alignas(Arena::kAlign) char block[512];
  Arena arena(block);
  EXPECT_FALSE(arena.counts());
  EXPECT_EQ(arena.take<char>(1), block);
  EXPECT_EQ(reinterpret_cast<char*>(arena.take<uint16_t>(32)), block + 64);  // 64 bytes
  EXPECT_EQ(reinterpret_cast<char*>(arena.take<int32_t>(17)), block + 128);  // 68 bytes
  EXPECT_EQ(arena.take<char>(0), block + 256);
  EXPECT_EQ(arena.used(), 256u);
}

TEST(Arena, WithoutABlockOnlyCounts) {
  Arena arena;
  EXPECT_TRUE(arena.counts());
  EXPECT_EQ(arena.take<char>(65), nullptr);
  EXPECT_EQ(arena.take<double>(8), nullptr);
  EXPECT_EQ(arena.used(), 192u);
}

TEST(Arena, CountsNoFurtherThanToTheMost) {
  Arena products, sums;
  products.take<uint64_t>(SIZE_MAX / 8 + 2);  // wraps to 8 bytes
  EXPECT_EQ(products.used(), SIZE_MAX - 63);
  sums.take<char>(SIZE_MAX - 100);
  sums.take<char>(200);  // wraps to 100 bytes
  EXPECT_EQ(sums.used(), SIZE_MAX - 63);
  sums.take<char>(0);
  EXPECT_EQ(sums.used(), SIZE_MAX - 63);
}

TEST(Arena, HasWhatWasCountedTheSecondTime) {
  int calls = 0;
  EXPECT_TRUE(withArena([&](Arena& arena) {
    char* const bytes = arena.take<char>(100);
    int32_t* const numbers = arena.take<int32_t>(50);
    EXPECT_EQ(arena.used(), 128u + 256);
    EXPECT_EQ(arena.counts(), calls++ == 0);
    if (arena.counts()) return;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes) % Arena::kAlign, 0u);
    bytes[0] = bytes[99] = 1;
    numbers[0] = numbers[49] = 1;
  }));
  EXPECT_EQ(calls, 2);
}

#if !VISTREL_SANITIZED
TEST(Arena, ReportsMemoryThatThereIsNot) {
  int calls = 0;
  EXPECT_FALSE(withArena([&](Arena& arena) {
    arena.take<char>(SIZE_MAX / 2);
    ++calls;
  }));
  EXPECT_EQ(calls, 1);
}
#endif

}  // namespace
}  // namespace vistrel::core::test
