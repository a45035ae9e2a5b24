#include "tests/apps/patches.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/apps/program.h"

namespace vistrel {
namespace {

TEST(Patches, AreNamedRegionsWithAColour) {
  const Scratch scratch;
  scratch.write("patches.txt", "# a comment\nwhite 16x8+100+80\n\nred  4x2+1+0   1 0.5 0.25\n");
  const auto patches = readPatches(scratch / "patches.txt");
  ASSERT_EQ(patches.size(), 2u);
  EXPECT_EQ(patches[0].name, "white");
  EXPECT_EQ(patches[0].box.width, 16u);
  EXPECT_EQ(patches[0].box.height, 8u);
  EXPECT_EQ(patches[0].box.x, 100u);
  EXPECT_EQ(patches[0].box.y, 80u);
  EXPECT_TRUE(patches[0].isNeutral());
  EXPECT_EQ(patches[1].colour, (std::array<double, 3>{1, 0.5, 0.25}));
  EXPECT_FALSE(patches[1].isNeutral());
}

TEST(Patches, RejectOtherLines) {
  const Scratch scratch;
  for (const char* const line :
       {"white 16x8+100", "white 16x8+100+80 1", "white 16x8+100+80 1 1 1 1", "16x8+100+80"}) {
    scratch.write("wrong.txt", line);
    EXPECT_THROW(readPatches(scratch / "wrong.txt"), std::runtime_error) << line;
  }
  EXPECT_THROW(readPatches(scratch / "none.txt"), std::runtime_error);
}

}  // namespace
}  // namespace vistrel
