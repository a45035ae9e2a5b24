#include "apps/names/output_type.h"

#include <gtest/gtest.h>

namespace vistrel::app {
namespace {

TEST(OutputType, IsWhatTheNameEndsOrBeginsWith) {
  EXPECT_EQ(outputTypeName("a/b.PNG"), "png");
  EXPECT_EQ(outputTypeName("b.tar.Tif"), "tif");
  EXPECT_EQ(outputTypeName("y4m:-"), "y4m");
  EXPECT_EQ(outputTypeName("RAW:-"), "raw");
  for (const char* none : {"", "-", "a", "a.b/c", "folder/", ".png", "x."})
    EXPECT_EQ(outputTypeName(none), "") << none;
}

}  // namespace
}  // namespace vistrel::app
