#include "apps/tools/guess/row_grids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

// Waves of 200 x 150 pixels, with that many bytes of zeros after each row.
std::vector<uint8_t> waves(size_t padding) {
  std::vector<uint8_t> bytes;
  for (int y = 0; y < 150; ++y) {
    for (int x = 0; x < 200; ++x)
      bytes.push_back(static_cast<uint8_t>(std::lround(128 + 60 * std::sin(x / 9.0 + y / 31.0) +
                                                       50 * std::cos(y / 7.0 - x / 23.0))));
    bytes.insert(bytes.end(), padding, 0);
  }
  return bytes;
}

TEST(RowGrids, RowsOfBytes) {
  const auto grids = app::rowGrids(waves(0), 0);
  ASSERT_FALSE(grids.empty());
  EXPECT_EQ(grids[0].layout.packing.code, uint32_t{VISTREL_PACKING_BYTES});
  EXPECT_EQ(grids[0].layout.stride % 200, 0u);
}

TEST(RowGrids, PaddingIsNoPicture) {
  const auto grids = app::rowGrids(waves(24), 0);
  const auto found = std::ranges::find_if(
      grids, [](const app::RowGrid& g) { return g.layout.width == 200 && g.layout.stride == 224; });
  ASSERT_NE(found, grids.end());
  EXPECT_EQ(found->padding.count, 24u);
}

// Rows of padding alone would be the easiest to predict.
TEST(RowGrids, PaddingExplainsOnlyItself) {
  const auto grids = app::rowGrids(waves(512), 200);
  const auto best =
      std::ranges::find(grids, size_t{712}, [](const app::RowGrid& g) { return g.layout.stride; });
  ASSERT_NE(best, grids.end());
  EXPECT_EQ(best->layout.skip, 0u);
}

TEST(RowGrids, LikelySkipsAreWithinARow) {
  const auto skips = app::likelySkips(1000, 300);
  EXPECT_EQ(skips[0], 0u);
  EXPECT_EQ(skips[1], 100u);                             // what is left after three rows
  EXPECT_EQ(std::ranges::count(skips, size_t{212}), 1);  // of a header of 512 bytes
  for (const size_t skip : skips) EXPECT_LT(skip, 300u);
}

}  // namespace
}  // namespace vistrel
