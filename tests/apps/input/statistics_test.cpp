#include "apps/input/statistics.h"

#include <gtest/gtest.h>

#include <vector>

namespace vistrel {
namespace {

template <class T>
app::Statistics statisticsOf(const std::vector<T>& samples, uint32_t bits, bool highBits = false) {
  vistrel_frame frame{};
  frame.samples = samples.data();
  frame.size = samples.size() * sizeof(T);
  frame.width = static_cast<uint32_t>(samples.size());
  frame.height = 1;
  frame.bytes_per_sample = sizeof(T);
  frame.bits = bits;
  frame.alignment = highBits ? VISTREL_HIGH_BITS : VISTREL_LOW_BITS;
  return app::statisticsOf(frame);
}

TEST(Statistics, OfBytes) {
  const app::Statistics s = statisticsOf<uint8_t>({1, 3, 3, 7}, 8);
  EXPECT_EQ(s.lowest, 1u);
  EXPECT_EQ(s.highest, 7u);
  EXPECT_EQ(s.mean, 3.5);
  EXPECT_EQ(s.usedBits, 3u);
  EXPECT_EQ(s.zeroLowBits, 0u);
  EXPECT_EQ(s.fullScale, 255u);
  EXPECT_EQ(s.percentSaturated, 0);
  EXPECT_EQ(s.percentAtHighest, 25);
}

// A sensor of 10 bits whose lowest two are 0 saturates at 1020.
TEST(Statistics, FullScaleLacksTheBitsThatAreZero) {
  const app::Statistics s = statisticsOf<uint16_t>({4, 1020, 8, 16}, 10);
  EXPECT_EQ(s.zeroLowBits, 2u);
  EXPECT_EQ(s.fullScale, 1020u);
  EXPECT_EQ(s.percentSaturated, 25);
}

TEST(Statistics, OfHighBits) {
  const app::Statistics s = statisticsOf<uint16_t>({64, 0xFFC0}, 10, true);
  EXPECT_EQ(s.zeroLowBits, 6u);
  EXPECT_EQ(s.fullScale, 0xFFC0u);
  EXPECT_EQ(s.percentSaturated, 50);
}

TEST(Statistics, SixteenBitsMayBeFewer) {
  EXPECT_EQ(statisticsOf<uint16_t>({5, 700}, 16).fullScale, 1023u);
  EXPECT_EQ(statisticsOf<uint16_t>({0, 0}, 16).fullScale, 65535u);
}

}  // namespace
}  // namespace vistrel
