#include <gtest/gtest.h>

#include <vector>

#include "tests/reference/convert.h"
#include "tests/reference/registry.h"

namespace {

// Bytes blue, green, red of a frame of 8-bit samples, demosaiced whole by algorithm 0.
std::vector<uint8_t> bilinear(const std::vector<uint8_t>& frame, uint32_t w, uint32_t h,
                              uint32_t nBayer) {
  reference::ImgLoadDriver();
  reference::ImgInitialize(1, w, h);
  std::vector<uint8_t> out(frame.size() * 3);
  EXPECT_EQ(
      reference::ImgConvert8(1, 2, 0, nBayer, 0, w, h, 0, 0, w, h, frame.data(), out.data(), 8, 0),
      1U);
  reference::ImgUnloadDriver();
  return out;
}

TEST(ReferenceBilinear, KeepsAFlatFrame) {
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer)
    for (uint8_t sample : bilinear(std::vector<uint8_t>(7 * 6, 199), 7, 6, nBayer))
      EXPECT_EQ(sample, 199);
}

TEST(ReferenceBilinear, SpreadsARedSampleToItsNeighboursAlone) {
  std::vector<uint8_t> frame(8 * 8, 0);
  frame[2 * 8 + 3] = 200;  // red: row 2, column 3 of GRBG
  const std::vector<uint8_t> out = bilinear(frame, 8, 8, 0);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 8; ++x) {
      const int steps = std::abs(y - 2) + std::abs(x - 3);
      const bool near = std::abs(y - 2) <= 1 && std::abs(x - 3) <= 1;
      const int red = !near ? 0 : steps == 0 ? 200 : steps == 1 ? 100 : 50;
      EXPECT_EQ(out[(y * 8 + x) * 3 + 2], red) << x << ' ' << y;
      EXPECT_EQ(out[(y * 8 + x) * 3 + 1], 0);
    }
  }
}

// (200 + 4 * 100 + 200 + 200 + 200) >> 3 = 150 at inner green sites; the frame's rim is raw.
TEST(ReferencePrepare, SmoothsInnerGreenOnly) {
  std::vector<uint8_t> frame(5 * 5, 200);
  frame[2 * 5 + 2] = 100;
  frame[0] = 100;
  const std::vector<uint8_t> out = bilinear(frame, 5, 5, 0);
  EXPECT_EQ(out[(2 * 5 + 2) * 3 + 1], 150);
  EXPECT_EQ(out[1], 100);
  EXPECT_EQ(out[(1 * 5 + 1) * 3 + 1], (100 + 4 * 200 + 200 + 200 + 100) >> 3);
}

}  // namespace
