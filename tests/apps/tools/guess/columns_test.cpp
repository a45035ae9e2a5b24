#include "apps/tools/guess/columns.h"

#include <gtest/gtest.h>

#include <random>

namespace vistrel {
namespace {

// Rows of 100 bytes: `change` for the first 80, the others as `pad` says.
template <class Pad>
std::vector<uint8_t> rows(Pad pad) {
  std::mt19937 random(3);
  std::vector<uint8_t> bytes;
  for (int y = 0; y < 60; ++y)
    for (int x = 0; x < 100; ++x)
      bytes.push_back(x < 80 ? static_cast<uint8_t>(x + 3 * y + (random() & 1)) : pad(random));
  return bytes;
}

TEST(Columns, BytesThatNeverChangeArePadding) {
  const auto paddings = app::paddingsOf(rows([](auto&) { return uint8_t{0}; }), 100);
  ASSERT_FALSE(paddings.empty());
  EXPECT_EQ(paddings[0].begin, 80u);
  EXPECT_EQ(paddings[0].count, 20u);
  EXPECT_FALSE(paddings[0].noise);
}

TEST(Columns, NoiseIsPadding) {
  const auto bytes = rows([](auto& random) { return static_cast<uint8_t>(random()); });
  const auto paddings = app::paddingsOf(bytes, 100);
  ASSERT_EQ(paddings.size(), 1u);
  EXPECT_EQ(paddings[0].begin, 80u);
  EXPECT_EQ(paddings[0].count, 20u);
  EXPECT_TRUE(paddings[0].noise);
}

// A ramp falls back at the left edge.
TEST(Columns, TheEdgeIsTheMostDifferentPlace) {
  std::vector<uint8_t> bytes;
  for (int i = 0; i < 5000; ++i) bytes.push_back(static_cast<uint8_t>((i + 60) % 100));
  const app::Seams seams(bytes, 100, 1);
  EXPECT_EQ(seams.rankOf(40), 0.99);
  EXPECT_EQ(seams.rankOf(41), 0);
}

}  // namespace
}  // namespace vistrel
