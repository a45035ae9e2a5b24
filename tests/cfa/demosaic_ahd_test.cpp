// The primitive for adaptive homogeneity-directed demosaicing: which calls fail, and where a region
// lies.
#include "tests/cfa/primitives.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(DemosaicAhd);

TEST(DemosaicAhdStatus, ReportsTheFirstOfSeveralFaults) {
  uint8_t samples[25] = {}, pixel[3] = {1, 2, 3};
  const auto status = [&](const uint8_t* from, CfaSize size, uint8_t* to, int grid) {
    return ippiDemosaicAHD_8u_C1C3R(from, {0, 0, 1, 1}, size, 5, to, 3, grid, nullptr, 0);
  };
  EXPECT_EQ(status(nullptr, {4, 4}, pixel, 4), -8);
  EXPECT_EQ(status(samples, {4, 4}, nullptr, 4), -8);
  EXPECT_EQ(status(samples, {4, 5}, pixel, 4), -6);
  EXPECT_EQ(status(samples, {5, 4}, pixel, 4), -6);
  EXPECT_EQ(status(samples, {5, 5}, pixel, 4), -5);
  EXPECT_EQ(status(samples, {5, 5}, pixel, -1), -5);
  EXPECT_THAT(pixel, ElementsAre(1, 2, 3));
  EXPECT_EQ(status(samples, {5, 5}, pixel, 0), 0);  // without scratch memory
  EXPECT_THAT(pixel, Each(0));
}

TEST(DemosaicAhdStatus, LooksAtTheFrameAndNotAtTheRegion) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    const auto status = [](int w, int h, CfaRect roi) {
      Rgb<T> rgb(roi);
      const int32_t result = demosaicAhd(Mosaic<T>(w, h, 9), roi, 0, rgb);
      EXPECT_EQ(rgb.isUntouched(), result != 0);
      return result;
    };
    EXPECT_EQ(status(4, 100, {0, 0, 2, 2}), -6);
    EXPECT_EQ(status(100, 4, {0, 0, 100, 4}), -6);
    EXPECT_EQ(status(5, 5, {0, 0, 5, 5}), 0);
    EXPECT_EQ(status(5, 5, {4, 4, 1, 1}), 0);
  });
}

TEST_P(DemosaicAhd, ARegionClippedToNothingSucceeds) {
  for (const CfaRect& roi : {CfaRect{9, 0, 3, 3}, CfaRect{0, 8, 3, 3}, CfaRect{40, 50, 3, 3},
                             CfaRect{2, 2, 0, 3}, CfaRect{2, 2, 3, -1}})
    EXPECT_TRUE(homogeneous(noiseMosaic<uint8_t>(9, 8, 1), 0, roi).isUntouched());
}

// quirk: origin-moves-region
TEST_P(DemosaicAhd, ANegativeOriginMovesTheRegionIn) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(30, 12, 2, 80);
  const Rgb<uint8_t> moved = homogeneous(m, 1, {-3, -2, 10, 6});
  EXPECT_TRUE(moved.hasOnly({-3, -2, 10, 6}));  // of its original size
  const Rgb<uint8_t> inside = homogeneous(m, 1, {0, 0, 10, 6});
  for (int y = 0; y < 6; ++y)
    for (int x = 0; x < 10; ++x) EXPECT_EQ(moved.at(x - 3, y - 2), inside.at(x, y));
}

}  // namespace
}  // namespace vistrel::core::test
