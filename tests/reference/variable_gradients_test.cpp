#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/reference/demosaic.h"
#include "tests/reference/demosaiced.h"

namespace {

// A mosaic of 5 by 5 pixels around a green site with red beside it and blue above it.
template <class T>
class Patch {
 public:
  explicit Patch(T value) : pixels_(75, 0) {
    for (int dy = -2; dy <= 2; ++dy)
      for (int dx = -2; dx <= 2; ++dx) at(dx, dy) = value;
  }
  T& at(int dx, int dy) { return channel((dx + dy) % 2 == 0 ? 1 : dy % 2 == 0 ? 2 : 0, dx, dy); }
  T& channel(int c, int dx, int dy) {
    return pixels_[static_cast<size_t>((dy + 2) * 15 + 3 * (dx + 2) + c)];
  }
  void run() { reference::calcOneGreenCenter(&channel(0, 0, 0), 15, 2); }
  int blue() { return channel(0, 0, 0); }
  int green() { return channel(1, 0, 0); }
  int red() { return channel(2, 0, 0); }

 private:
  std::vector<T> pixels_;
};

TEST(ReferenceVariableGradients, KeepAFlat) {
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer) {
    const Demosaiced<uint8_t> out(5, nBayer, Mosaic<uint8_t>(7, 6, 123));
    for (int y = 0; y < 6; ++y) {
      for (int x = 0; x < 7; ++x) {
        EXPECT_EQ(out.B(x, y), 123);
        EXPECT_EQ(out.G(x, y), 123);
        EXPECT_EQ(out.R(x, y), 123);
      }
    }
  }
}

// North is 100, east 40, the others 0. North comes first and so never counts as the maximum, nor
// does east, which lowers the minimum: the threshold is 0 and both are dropped. With a true
// maximum the threshold would be 50 and east kept: 100 + (700 - 720) / 7 = 98.
TEST(ReferenceVariableGradients, NeverTakeNorthAsTheMaximum) {
  Patch<uint8_t> patch(100);
  patch.at(0, -2) = 0;
  patch.at(2, 0) = 140;
  patch.run();
  EXPECT_EQ(patch.red(), 100);
  EXPECT_EQ(patch.blue(), 100);
}

// Gradients 80, 70 .. 10 in order: the maximum stays 0, the difference wraps and all are kept.
// Green's sum is 140 + 135 + 130 + 125 + 400 = 930; 100 + (800 - 930) / 8 = 84, truncated.
TEST(ReferenceVariableGradients, KeepAllDirectionsOfAFallingRun) {
  Patch<uint8_t> patch(100);
  const int places[8][2] = {{0, -2}, {2, 0}, {0, 2}, {-2, 0}, {2, -2}, {2, 2}, {-2, -2}, {-2, 2}};
  for (int k = 0; k < 8; ++k)
    patch.at(places[k][0], places[k][1]) = static_cast<uint8_t>(180 - 10 * k);
  patch.run();
  EXPECT_EQ(patch.red(), 84);
  EXPECT_EQ(patch.blue(), 84);
  EXPECT_EQ(patch.green(), 100);
}

TEST(ReferenceVariableGradients, HoldComputedSamplesTo1023) {
  Patch<uint16_t> patch(4000);
  patch.run();
  EXPECT_EQ(patch.red(), 1023);
  EXPECT_EQ(patch.blue(), 1023);
  EXPECT_EQ(patch.green(), 4000);
}

// Gradients of 196604 and 196605 against a threshold of 163837: no direction is kept, and the other
// colours get the pixel's own sample.
TEST(ReferenceVariableGradients, FallBackToTheSensedSample) {
  const std::string rows[5] = {"###.#", "...#.", "##..#", "###.#", "###.#"};
  Patch<uint16_t> patch(0);
  for (int dy = -2; dy <= 2; ++dy)
    for (int dx = -2; dx <= 2; ++dx)
      patch.at(dx, dy) = rows[dy + 2][static_cast<size_t>(dx + 2)] == '#' ? 65535 : 0;
  patch.at(0, 0) = 0;
  patch.run();
  EXPECT_EQ(patch.red(), 0);
  EXPECT_EQ(patch.blue(), 0);
}

}  // namespace
