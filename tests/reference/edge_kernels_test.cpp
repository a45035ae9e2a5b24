#include "tests/reference/edge_kernels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using testing::Each;

// Five rows of eleven samples; a kernel's lane 0 is the pixel at row 2, column 2.
template <class T>
struct Patch {
  std::vector<T> samples;
  int red[8] = {}, blue[8] = {}, green[8] = {};

  explicit Patch(T value) : samples(55, value) {}
  T& at(int r, int c) { return samples[static_cast<size_t>((r + 2) * 11 + c + 2)]; }
  void runGreen(int T0, int T1, int T2, int T3, int bBlueRow) {
    reference::vec_G_CalcGreen_3x3x4_ext<const T*>(samples.data(), 24, 11, red, blue, green, T0, T1,
                                                   T2, T3, bBlueRow);
  }
  void runRedBlue(int bBlueRow) {
    reference::vec_RB_CalcGreen_3x3x4_ext<const T*>(samples.data(), 24, 11, red, blue, green,
                                                    bBlueRow);
  }
};

TEST(ReferenceEdgeKernels, KeepAFlatInFourLanes) {
  for (int bBlueRow : {0, 1}) {
    Patch<uint8_t> patch(77);
    patch.runRedBlue(bBlueRow);
    for (int lane = 0; lane < 8; ++lane) {
      const int value = lane % 2 == 0 ? 77 : 0;
      EXPECT_EQ(patch.red[lane], value);
      EXPECT_EQ(patch.green[lane], value);
      EXPECT_EQ(patch.blue[lane], value);
    }
    Patch<uint8_t> other(77);
    other.runGreen(0, 0, 0, 0, bBlueRow);
    EXPECT_THAT(std::vector<int>({other.red[6], other.green[6], other.blue[6]}), Each(77));
  }
}

TEST(ReferenceEdgeKernels, BlendInQuarters) {
  Patch<uint8_t> patch(0);
  patch.at(0, 0) = 255;  // A = 127
  const auto green = [&](int T0, int T1, int T2, int T3) {
    patch.runGreen(T0, T1, T2, T3, 0);
    return patch.green[0];
  };
  EXPECT_EQ(green(254, 191, 127, 63), 255);
  EXPECT_EQ(green(255, 191, 127, 63), 63 + 127 + 31);
  EXPECT_EQ(green(255, 255, 127, 63), 127 + 63);  // equal to T1: the comparison is strict
  EXPECT_EQ(green(255, 255, 255, 63), 63 + 31 + 63);
  EXPECT_EQ(green(255, 255, 255, 255), 127);
}

// A sample of 32768 or more counts as the smaller one: the two terms with the pixel itself make DV
// = 4 * (1000 - 40000), and DH the same; a step beside it tips the balance.
TEST(ReferenceEdgeKernels, OrderSamplesByTheirSignedPatterns) {
  Patch<uint16_t> patch(1000);
  patch.at(0, 0) = 40000;
  patch.at(0, -1) = patch.at(0, 1) = 3000;
  patch.at(-2, 0) = 40000;  // DV = 0 - 39000 = -39000 > DH = -39000 - 39000
  patch.runRedBlue(0);
  EXPECT_EQ(patch.green[0], 3000);
  patch.at(-2, 0) = 1000;
  patch.at(0, -2) = 40000;  // DV = -78000, DH = -39000
  patch.runRedBlue(0);
  EXPECT_EQ(patch.green[0], 1000);
}

TEST(ReferenceEdgeKernels, TakeTheVerticalPairOnATie) {
  Patch<uint8_t> patch(50);
  patch.at(-1, 0) = patch.at(1, 0) = 10;
  patch.at(0, -1) = patch.at(0, 1) = 90;
  patch.runRedBlue(0);
  EXPECT_EQ(patch.green[0], 10);
}

// A dark red site among bright blue ones and no green: 0 + (4 * 200 >> 2) = 200 on top of green,
// and -200 where the diagonals are dark and green bright.
TEST(ReferenceEdgeKernels, ClampNothing) {
  Patch<uint8_t> patch(0);
  for (int r : {-2, 0, 2})
    for (int c : {-1, 1, 3, 5, 7}) patch.at(r, c) = 200;
  for (int r : {-1, 1})
    for (int c : {-2, 0, 2, 4, 6, 8}) patch.at(r, c) = 200;
  patch.at(-1, 0) = patch.at(1, 0) = 0;
  // DV = DH = 0: green is 0; the estimates at the diagonals by the vertical pair are 200.
  patch.runRedBlue(1);
  EXPECT_EQ(patch.green[0], 0);
  EXPECT_EQ(patch.red[0], -200);
  EXPECT_EQ(patch.blue[0], 0);
}

}  // namespace
