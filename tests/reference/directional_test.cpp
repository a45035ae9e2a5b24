#include "tests/reference/directional.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/reference/cfa.h"

namespace {

using reference::DirectionalFrame;
using testing::Each;
using testing::ElementsAre;

constexpr int RGGB = reference::CFA_GRID_RGGB, BGGR = reference::CFA_GRID_BGGR;
constexpr int GBRG = reference::CFA_GRID_GBRG, GRBG = reference::CFA_GRID_GRBG;

template <class SampleAt>
DirectionalFrame frameOf(int width, int height, int bits, int grid, SampleAt sampleAt) {
  DirectionalFrame frame{width, height, bits, grid, {}};
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) frame.samples.push_back(static_cast<uint16_t>(sampleAt(x, y)));
  return frame;
}

// Samples of `bits` bits; a third of them are extreme.
DirectionalFrame noise(int width, int height, int bits, int grid, uint32_t seed = 3) {
  const uint32_t largest = (1U << bits) - 1;
  return frameOf(width, height, bits, grid, [&](int, int) {
    seed = seed * 1664525 + 1013904223;
    const uint32_t kind = seed >> 29, value = seed >> 8 & largest;
    return kind == 0 ? 0 : kind == 1 ? largest : value;
  });
}

class Image {
 public:
  explicit Image(const DirectionalFrame& frame)
      : width_(frame.width), rgb_(reference::demosaicDirectional(frame)) {}

  std::vector<int> at(int x, int y) const {
    const size_t k = static_cast<size_t>(3 * (y * width_ + x));
    return {rgb_[k], rgb_[k + 1], rgb_[k + 2]};
  }
  const std::vector<uint16_t>& samples() const { return rgb_; }

 private:
  int width_;
  std::vector<uint16_t> rgb_;
};

int sampleAt(const DirectionalFrame& frame, int x, int y) {
  return frame.samples[static_cast<size_t>(y * frame.width + x)];
}

TEST(ReferenceDirectional, CountsQuartersOfAnOctave) {
  EXPECT_EQ(reference::directionalLog(1), 0);
  EXPECT_EQ(reference::directionalLog(2), 4);
  EXPECT_EQ(reference::directionalLog(3), 6);
  EXPECT_EQ(reference::directionalLog(4), 8);
  EXPECT_EQ(reference::directionalLog(5), 9);
  EXPECT_EQ(reference::directionalLog(7), 11);
  EXPECT_EQ(reference::directionalLog(8), 12);
  EXPECT_EQ(reference::directionalLog(9), 12);
  EXPECT_EQ(reference::directionalLog(57), 23);      // 32 * (1 + 3 / 4) = 56
  EXPECT_EQ(reference::directionalLog(589816), 76);  // 9 * 65535 + 1: just above 2^19
}

// 128 / (1 + 2^(3n / 4)) parts of the rougher value.
TEST(ReferenceDirectional, BlendsByTheCubeOfTheRoughness) {
  const int parts[] = {64, 48, 33, 22, 14, 9, 5, 3, 2, 1, 1, 0, 0};
  for (int n = 0; n < 13; ++n) {
    EXPECT_EQ(reference::directionalBlend(0, 128, 7, 7 + n), parts[n]);
    EXPECT_EQ(reference::directionalBlend(128, 0, 7 + n, 7), parts[n]);
  }
  EXPECT_EQ(reference::directionalBlend(10, 11, 0, 0), 11);  // rounds a half up
  EXPECT_EQ(reference::directionalBlend(11, 10, 0, 0), 11);
  EXPECT_EQ(reference::directionalBlend(-10, -11, 0, 0), -10);
  EXPECT_EQ(reference::directionalBlend(-7, 300, 0, 90), -7);
  EXPECT_EQ(reference::directionalBlend(-262140, 262140, 1, 0), 65535);  // 524280 * 48 / 128 less
}

TEST(ReferenceDirectional, KeepsPlainColours) {
  for (const int bits : {8, 10, 16}) {
    const int largest = (1 << bits) - 1;
    for (const std::vector<int>& colour : {std::vector<int>{0, 0, 0},
                                           {largest, largest, largest},
                                           {largest, 0, largest},
                                           {0, largest, 77},
                                           {90, 40, 7}}) {
      const Image image(frameOf(9, 7, bits, RGGB, [&](int x, int y) {
        return colour[static_cast<size_t>(x % 2 + y % 2)];
      }));
      for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x) EXPECT_EQ(image.at(x, y), colour);
    }
  }
}

// Two greens of different brightness, which mirroring repeats without end. Every difference along a
// row is (20 - 10) or (30 - 40), along a column (30 - 10) or (20 - 40); nothing is rough, so red
// and blue sites take their means, 15 and -15.
TEST(ReferenceDirectional, ConvertsTheSmallestFrame) {
  const Image image({2, 2, 8, RGGB, {10, 20, 30, 40}});
  EXPECT_THAT(image.at(0, 0), ElementsAre(10, 25, 40));
  EXPECT_THAT(image.at(1, 0), ElementsAre(5, 20, 35));
  EXPECT_THAT(image.at(0, 1), ElementsAre(15, 30, 45));
  EXPECT_THAT(image.at(1, 1), ElementsAre(10, 25, 40));
}

// At the bright site both directions say -187 quarters, and the sites two away say 0: in all, the
// differences change by 4 * 23, the greens around by nothing, red itself by 400 >> 5 = 12. So the
// difference is mainly -400: -400 + 400 * 2 / 128 = -394, and green is 102. Beside the site, red is
// 149 through the differences and 150 directly, which counts 14 of 128 parts. On the diagonals it
// is 100 through the differences, which change by 49, and 125 directly, from samples that change by
// 200 >> 1 around the site: 100 + 25 * 14 / 128.
TEST(ReferenceDirectional, KeepsGreenBesideASingleBrightSample) {
  for (const int grid : {RGGB, BGGR}) {
    const Image image(
        frameOf(24, 24, 8, grid, [](int x, int y) { return x == 12 && y == 12 ? 200 : 100; }));
    for (int y = 0; y < 24; ++y) {
      for (int x = 0; x < 24; ++x) {
        const int dx = std::abs(x - 12), dy = std::abs(y - 12);
        const int bright = dx > 1 || dy > 1 ? 100 : dx + dy == 0 ? 200 : dx + dy == 1 ? 149 : 103;
        const int others = dx + dy == 0 ? 102 : 100;
        const bool isRed = grid == RGGB;
        EXPECT_THAT(image.at(x, y),
                    ElementsAre(isRed ? bright : others, others, isRed ? others : bright))
            << x << ' ' << y;
      }
    }
  }
}

// Gray that changes along one axis only: the other direction is smooth and exact.
TEST(ReferenceDirectional, FollowsTheSmoothDirection) {
  const int line[] = {10, 200, 90, 230, 0, 140, 20, 255, 60};
  for (const int grid : {RGGB, GRBG, GBRG, BGGR}) {
    const Image upright(frameOf(27, 20, 8, grid, [&](int x, int) { return line[x % 9]; }));
    const Image lying(frameOf(20, 27, 8, grid, [&](int, int y) { return line[y % 9]; }));
    for (int k = 0; k < 27; ++k) {
      for (int along = 0; along < 20; ++along) {
        EXPECT_THAT(upright.at(k, along), Each(line[k % 9]));
        EXPECT_THAT(lying.at(along, k), Each(line[k % 9]));
      }
    }
  }
}

// Green has an edge that red and blue lack. A blend of differences alone would move it into them:
// at the edge, the differences left and right are 200 and 0 levels, their mean is 100.
TEST(ReferenceDirectional, KeepsColoursThatAreSmootherThanTheirDifferences) {
  const Image image(frameOf(32, 24, 8, RGGB, [](int x, int y) {
    const int colour[] = {50, x < 16 ? 250 : 50, 20};
    return colour[x % 2 + y % 2];
  }));
  for (int y = 0; y < 24; ++y) {
    for (int x = 0; x < 32; ++x) {
      EXPECT_NEAR(image.at(x, y)[0], 50, 1) << x << ' ' << y;
      EXPECT_NEAR(image.at(x, y)[2], 20, 1) << x << ' ' << y;
    }
  }
}

// A gray plane: the second differences of every line are zero.
TEST(ReferenceDirectional, KeepsGraySlopes) {
  const auto slope = [](int x, int y) { return 3 * x + 5 * y; };
  const Image image(frameOf(30, 24, 8, RGGB, slope));
  for (int y = 8; y < 16; ++y)
    for (int x = 8; x < 22; ++x) EXPECT_THAT(image.at(x, y), Each(slope(x, y)));
}

TEST(ReferenceDirectional, NeverAltersASensedSample) {
  for (const int bits : {8, 12, 16}) {
    const DirectionalFrame frame = noise(15, 14, bits, RGGB);
    const Image image(frame);
    for (int y = 0; y < 14; ++y)
      for (int x = 0; x < 15; ++x)
        EXPECT_EQ(image.at(x, y)[static_cast<size_t>(x % 2 + y % 2)], sampleAt(frame, x, y));
  }
}

TEST(ReferenceDirectional, ReachesBothEndsOfTheRange) {
  for (const int bits : {8, 9, 12, 16}) {
    const auto [least, most] = std::ranges::minmax(Image(noise(40, 30, bits, GBRG)).samples());
    EXPECT_EQ(least, 0);
    EXPECT_EQ(most, (1 << bits) - 1);
  }
}

TEST(ReferenceDirectional, FollowsTheLevelOfTheFrame) {
  const DirectionalFrame dark =
      frameOf(16, 14, 12, GRBG, [](int x, int y) { return 1500 + x * y % 7 * 90; });
  DirectionalFrame light = dark;
  for (uint16_t& sample : light.samples) sample = static_cast<uint16_t>(sample + 700);
  std::vector<uint16_t> expected = Image(dark).samples();
  for (uint16_t& sample : expected) sample = static_cast<uint16_t>(sample + 700);
  EXPECT_EQ(Image(light).samples(), expected);
}

TEST(ReferenceDirectional, TreatsRedLikeBlue) {
  DirectionalFrame frame = noise(13, 12, 10, RGGB);
  const Image image(frame);
  frame.grid = BGGR;
  const Image exchanged(frame);
  for (int y = 0; y < 12; ++y) {
    for (int x = 0; x < 13; ++x) {
      std::vector<int> pixel = exchanged.at(x, y);
      std::swap(pixel[0], pixel[2]);
      EXPECT_EQ(pixel, image.at(x, y));
    }
  }
}

// A frame of odd sides keeps its phase when it is mirrored.
TEST(ReferenceDirectional, TurnsAndMirrorsWithTheFrame) {
  const int n = 15;
  for (const auto& [grid, transposed] : {std::pair{RGGB, RGGB}, {GRBG, GBRG}}) {
    const DirectionalFrame frame = noise(n, n, 8, grid);
    const Image image(frame);
    const Image mirrored(
        frameOf(n, n, 8, grid, [&](int x, int y) { return sampleAt(frame, n - 1 - x, y); }));
    const Image turned(
        frameOf(n, n, 8, transposed, [&](int x, int y) { return sampleAt(frame, y, x); }));
    for (int y = 0; y < n; ++y) {
      for (int x = 0; x < n; ++x) {
        EXPECT_EQ(mirrored.at(n - 1 - x, y), image.at(x, y));
        EXPECT_EQ(turned.at(y, x), image.at(x, y));
      }
    }
  }
}

// Whether planes or samples are mirrored makes no difference. Sizes down to the smallest, which are
// reflected many times.
TEST(ReferenceDirectional, SeesTheFrameMirroredBeyondItsEdges) {
  const int pad = 10;
  const auto mirror = [](int i, int size) {
    while (i < 0 || i >= size) i = i < 0 ? -i : 2 * (size - 1) - i;
    return i;
  };
  for (int h = 2; h < 10; ++h) {
    for (int w = 2; w < 10; ++w) {
      const DirectionalFrame frame = noise(w, h, 8, GRBG, static_cast<uint32_t>(w * h));
      const Image image(frame);
      const Image padded(frameOf(w + 2 * pad, h + 2 * pad, 8, GRBG, [&](int x, int y) {
        return sampleAt(frame, mirror(x - pad, w), mirror(y - pad, h));
      }));
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) EXPECT_EQ(padded.at(x + pad, y + pad), image.at(x, y));
    }
  }
}

// The furthest row or column whose samples change the pixel in the middle of some frames.
int reachAt(int column, int row, uint32_t frames) {
  const int n = 30;
  int furthest = 0;
  for (uint32_t seed = 1; seed <= frames; ++seed) {
    const DirectionalFrame frame = noise(n, n, 16, RGGB, seed);
    const auto before = Image(frame).at(column, row);
    for (int y = 0; y < n; ++y) {
      for (int x = 0; x < n; ++x) {
        const int distance = std::max(std::abs(x - column), std::abs(y - row));
        if (distance <= furthest) continue;
        DirectionalFrame other = frame;
        uint16_t& sample = other.samples[static_cast<size_t>(y * n + x)];
        sample = static_cast<uint16_t>(65535 - sample);
        if (Image(other).at(column, row) != before) furthest = distance;
      }
    }
  }
  return furthest;
}

// Green sites reach one further than the others, where few samples count.
TEST(ReferenceDirectional, ReachesNinePixels) {
  EXPECT_EQ(std::max(reachAt(15, 14, 4), reachAt(14, 15, 24)), 9);
  EXPECT_LE(reachAt(14, 14, 4), 8);
  EXPECT_LE(reachAt(15, 15, 4), 8);
}

}  // namespace
