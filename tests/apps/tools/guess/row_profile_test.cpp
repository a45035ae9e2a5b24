#include "apps/tools/guess/row_profile.h"

#include <gtest/gtest.h>

#include <cmath>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

// Three frames of 40 rows, which get brighter from top to bottom.
std::vector<uint8_t> threeFrames() {
  std::vector<uint8_t> bytes;
  for (int y = 0; y < 120; ++y)
    for (int x = 0; x < 64; ++x) bytes.push_back(static_cast<uint8_t>(x % 8 + 5 * (y % 40)));
  return bytes;
}

TEST(RowProfile, FramesBeginAtSeams) {
  const auto bytes = threeFrames();
  app::RowReader reader(bytes, {{VISTREL_PACKING_BYTES, 8, 8}, 64, 64, 0});
  const app::RowProfile profile(reader, 64);
  EXPECT_GT(profile.rankOfSeam(40), 0.95);
  EXPECT_GT(profile.rankOfSeam(80), 0.95);
  EXPECT_LT(profile.rankOfSeam(60), 0.95);
  EXPECT_EQ(profile.strengthOfSeam(60), 0);
  EXPECT_EQ(profile.strengthOfSeam(40), 1);
  EXPECT_EQ(profile.seams()[0] % 40, 0u);
}

TEST(RowProfile, EqualFramesHaveNoDistance) {
  const auto bytes = threeFrames();
  app::RowReader reader(bytes, {{VISTREL_PACKING_BYTES, 8, 8}, 64, 64, 0});
  const app::RowProfile profile(reader, 64);
  EXPECT_EQ(profile.distanceOfFrames(0, 40), 0);
  EXPECT_GT(profile.distanceOfFrames(0, 30), 0.2);
}

}  // namespace
}  // namespace vistrel
