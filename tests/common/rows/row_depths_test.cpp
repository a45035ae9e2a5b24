#include "common/rows/row_depths.h"

#include <gtest/gtest.h>

using namespace vistrel::core;

namespace {

TEST(RowDepths, AreTwelveBitsUntilARowHasMore) {
  RowDepths depths;
  EXPECT_TRUE(depths.areTwelveBitsFrom(-3));
  depths.loaded(-2, 4095);
  EXPECT_TRUE(depths.areTwelveBitsFrom(-2));
  depths.loaded(-1, 4096);
  EXPECT_FALSE(depths.areTwelveBitsFrom(-2));
  EXPECT_FALSE(depths.areTwelveBitsFrom(-1));
}

TEST(RowDepths, ForgetARowThatIsLeftBehind) {
  RowDepths depths;
  depths.loaded(4, 65535);
  depths.loaded(5, 0);
  EXPECT_FALSE(depths.areTwelveBitsFrom(4));
  EXPECT_TRUE(depths.areTwelveBitsFrom(5));
  depths.loaded(6, 32768);
  EXPECT_FALSE(depths.areTwelveBitsFrom(5));
}

}  // namespace
