#include "apps/tools/guess/arrangement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

// A header of 256 bytes of noise, then three frames of 96 x 64 pixels: a ramp from row to row.
std::vector<uint8_t> threeFrames() {
  std::mt19937 random(2);
  std::vector<uint8_t> bytes(256);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
  for (int y = 0; y < 3 * 64; ++y)
    for (int x = 0; x < 96; ++x) bytes.push_back(static_cast<uint8_t>(2 * (y % 64) + x));
  return bytes;
}

app::RowGrid grid() { return {{{VISTREL_PACKING_BYTES, 8, 8}, 96, 96, 256 % 96}}; }

app::Arrangement best(const std::optional<app::Size>& size) {
  const auto all = app::arrangementsOf(threeFrames(), grid(), size);
  return *std::ranges::max_element(all, {}, &app::Arrangement::odds);
}

TEST(Arrangement, HeaderAndFrames) {
  const app::Arrangement a = best({});
  EXPECT_EQ(a.layout.skip, 256u);
  EXPECT_EQ(a.height, 64u);
  EXPECT_EQ(a.frames, 3u);
  EXPECT_EQ(a.trailing, 0u);
}

TEST(Arrangement, OnlyTheKnownSize) {
  const app::Arrangement a = best(app::Size{96, 64});
  EXPECT_EQ(a.layout.skip, 256u);
  EXPECT_EQ(a.frames, 3u);
  for (const auto& other : app::arrangementsOf(threeFrames(), grid(), app::Size{96, 64}))
    EXPECT_EQ(other.height, 64u);
}

}  // namespace
}  // namespace vistrel
