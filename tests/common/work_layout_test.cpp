#include "common/work_layout.h"

#include <gtest/gtest.h>

using namespace vistrel::core;

namespace {

TEST(WorkLayout, GuardsTheImageByTwoPixels) {
  constexpr WorkLayout layout = WorkLayout::guarded(5);
  EXPECT_EQ(layout.S, 27u);  // 2 + 5 + 2 pixels
  EXPECT_EQ(layout.pixelStride(), 9u);
  EXPECT_EQ(layout.row(0), 60u);  // two rows and two pixels
  EXPECT_EQ(layout.row(-2), 6u);
  EXPECT_EQ(layout.row(3), 141u);
}

TEST(WorkLayout, PacksACompactImage) {
  constexpr WorkLayout layout = WorkLayout::compact(5);
  EXPECT_EQ(layout.S, 15u);
  EXPECT_EQ(layout.pixelStride(), 5u);
  EXPECT_EQ(layout.row(0), 0u);
  EXPECT_EQ(layout.row(3), 45u);
}

TEST(WorkLayout, HasRowsOfTheRegionAtFullResolution) {
  const Region region(0, 2, 1, 1, 5, 4);  // blocks of 3 x 3
  EXPECT_EQ(guardedLayout(region).S, 57u);
  EXPECT_EQ(compactLayout(region).S, 45u);
}

TEST(WorkLayout, HasWideOffsets) {
  EXPECT_EQ(WorkLayout::guarded(0x40000000).row(0), size_t{6} * 0x40000000 + 30);
}

TEST(WorkLayout, TakesGrayRowsByPixels) {
  EXPECT_EQ(grayStride(2, 100, 7), 100u);
  EXPECT_EQ(grayStride(4, 100, 7), 100u);
  EXPECT_EQ(grayStride(1, 100, 7), 33u);
}

TEST(WorkBufferBytes, HoldThreePixelsOnEverySide) {
  EXPECT_EQ(workBufferBytes(0, 0), 2u * 18 * 6);
  EXPECT_EQ(workBufferBytes(640, 480), 2u * (3 * 640 + 18) * 486);
}

TEST(WorkBufferBytes, WrapAt32BitsOfSamples) {
  EXPECT_EQ(workBufferBytes(21840, 65529), 2u * 65534);  // 65538 * 65535 is 2^32 + 65534
  EXPECT_EQ(workBufferBytes(0xFFFFFFFA, 5), 0u);
}

}  // namespace
