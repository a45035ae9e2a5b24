#include "apps/options/geometry.h"

#include <gtest/gtest.h>

#include "apps/error.h"

namespace vistrel {
namespace {

TEST(Geometry, Size) {
  const app::Size size = app::parseSize("--size", "640x4294967295");
  EXPECT_EQ(size.width, 640u);
  EXPECT_EQ(size.height, 4294967295u);
  EXPECT_THROW(app::parseSize("--size", "640x4294967296"), app::ProgramError);
}

TEST(Geometry, RegionIsTypedAsItIsParsed) {
  const vistrel_region region = app::parseRegion("--roi", "640x480+16+8");
  EXPECT_EQ(region.width, 640u);
  EXPECT_EQ(region.height, 480u);
  EXPECT_EQ(region.x, 16u);
  EXPECT_EQ(region.y, 8u);
  EXPECT_EQ(app::regionText(region), "640x480+16+8");
  EXPECT_THROW(app::parseRegion("--roi", "0x0+0+0"), app::ProgramError);
}

}  // namespace
}  // namespace vistrel
