#include "apps/tools/guess/likeness.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vistrel {
namespace {

// Alternating values differ from their neighbours, and equal those two places away.
TEST(Likeness, DifferenceAtADistance) {
  const app::Samples s{0, 10, 0, 10, 0, 10, 0, 10};
  EXPECT_EQ(app::difference(s, 1), 10);
  EXPECT_EQ(app::difference(s, 2), 0);
  EXPECT_EQ(app::difference(s, 8), HUGE_VAL);
}

TEST(Likeness, FlatSamplesAreUnlikeByNearlyNothing) {
  EXPECT_EQ(app::unlike(app::Samples(100, 7)), app::kFlat);
}

TEST(Likeness, ARampIsMoreUnlikeThanItsNeighbours) {
  app::Samples ramp(1000);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<uint16_t>(i);
  EXPECT_EQ(app::difference(ramp, 2), 2);
  // The mean of the distances 142 i + 2 i + 1 for i from 1 to 5: 144 * 3 + 1.
  EXPECT_EQ(app::unlike(ramp), 433);
}

TEST(Likeness, BytesOfAWordAreUneven) {
  std::vector<uint8_t> even(1400), words(1400);
  for (size_t i = 0; i < 1400; ++i) {
    even[i] = static_cast<uint8_t>(i * i);
    words[i] =
        static_cast<uint8_t>(i % 2 ? i / 200 : i * i * 37 >> 2);  // a high byte varies little
  }
  EXPECT_GT(app::evenness(even, 1), 0.99);
  EXPECT_LT(app::evenness(words, 2), 0.5);
}

// The middle byte of three has four bits that are always 0.
TEST(Likeness, BitsThatAPositionNeverHasAreUneven) {
  std::vector<uint8_t> bytes;
  for (int i = 0; i < 300; ++i) bytes.push_back(static_cast<uint8_t>(i % 3 == 1 ? i & 0x33 : i));
  EXPECT_EQ(app::evenness(bytes, 3), 0);
  EXPECT_GT(app::evenness(bytes, 2), 0);
}

}  // namespace
}  // namespace vistrel
