// Adaptive homogeneity-directed demosaicing: the formulas of both images.
#include "tests/cfa/primitives.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(Reconstruction);

TEST_P(Reconstruction, SensedSamplesAreNotTouched) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    Mosaic<T> m = noiseMosaic<T>(37, 15, 6);
    for (size_t i = 0; i < m.samples.size(); i += 5) m.samples[i] = kLargest<T>;
    for (int grid = 0; grid < 4; ++grid) {
      const Rgb<T> rgb = homogeneous(m, grid);
      for (int y = 0; y < 15; ++y)
        for (int x = 0; x < 37; ++x)
          EXPECT_EQ(rgb.at(x, y)[static_cast<size_t>(colourAt(grid, x, y))], m.at(x, y));
    }
  });
}

// An RGGB frame that is its own mirror image about the diagonal. There both images agree, so that
// the formulas show whichever is chosen. The red site under test is (12, 12).
template <class T>
struct Symmetric {
  Mosaic<T> m;
  explicit Symmetric(unsigned value) : m(25, 25, value) {}
  void set(int x, int y, int value) {
    m.at(12 + x, 12 + y) = m.at(12 + y, 12 + x) = static_cast<T>(value);
  }
  typename Rgb<T>::Pixel centre() const { return homogeneous(m, CFA_GRID_RGGB).at(12, 12); }
};

// Green neighbours a and b, the site itself, and its own colour two samples away.
template <class T>
int greenOf(int a, int b, int c, int l, int r) {
  Symmetric<T> frame(60);
  frame.set(0, 0, c);
  frame.set(-1, 0, a);
  frame.set(1, 0, b);
  frame.set(-2, 0, l);
  frame.set(2, 0, r);
  return frame.centre()[1];
}

TEST_P(Reconstruction, GreenStaysBetweenItsNeighbours) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    EXPECT_EQ(greenOf<T>(10, 20, 0, 100, 100), 10);  // -50 + 15
    EXPECT_EQ(greenOf<T>(20, 10, 0, 100, 100), 10);
    EXPECT_EQ(greenOf<T>(10, 20, 100, 0, 0), 20);  // 50 + 15
    EXPECT_EQ(greenOf<T>(10, 20, 12, 10, 10), 16);
    for (int c : {0, 100, 255}) EXPECT_EQ(greenOf<T>(50, 50, c, 200, 30), 50);
  });
}

TEST_P(Reconstruction, GreensTwoTermsRoundDownEachByItself) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    EXPECT_EQ(greenOf<T>(10, 30, 50, 50, 51), 20 - 1);  // -1 / 4
    EXPECT_EQ(greenOf<T>(10, 30, 50, 48, 49), 20 + 0);  // 3 / 4
    EXPECT_EQ(greenOf<T>(10, 31, 50, 49, 49), 20 + 0);  // 20.5 + 0.5
    EXPECT_EQ(greenOf<T>(10, 31, 50, 50, 51), 20 - 1);
  });
}

TEST_P(Reconstruction, DifferencesOfColoursRoundDown) {
  atBothDepths([](auto depth) {
    Symmetric<decltype(depth)> frame(100);
    frame.set(1, 1, 99);  // a sum of four differences of -1
    EXPECT_THAT(frame.centre(), ElementsAre(100, 100, 99));
  });
}

// Greens of `beside` around the red site, of `elsewhere` everywhere else; blue is uniform. At the
// blue sites green is the mean of both.
template <class T>
int blueOf(int beside, int elsewhere, int blue) {
  Symmetric<T> frame(static_cast<unsigned>(elsewhere));
  for (int y = -12; y <= 12; ++y)
    for (int x = -12; x <= 12; ++x)
      if (x % 2 != 0 && y % 2 != 0) frame.set(x, y, blue);
  frame.set(-1, 0, beside);
  frame.set(1, 0, beside);
  return frame.centre()[2];
}

TEST_P(Reconstruction, ComputedColoursAreLimitedToTheSamplesRange) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    EXPECT_EQ(blueOf<T>(0, 6, 0), 0);                       // 0 + (0 - 3)
    EXPECT_EQ(blueOf<T>(14, 0, kLargest<T>), kLargest<T>);  // 14 + (largest - 7)
    EXPECT_EQ(blueOf<T>(0, 14, kLargest<T>), kLargest<T> - 7);
    EXPECT_EQ(blueOf<T>(6, 0, 0), 3);
  });
}

}  // namespace
}  // namespace vistrel::core::test
