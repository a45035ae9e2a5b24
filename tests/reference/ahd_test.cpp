#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/reference/cfa.h"

namespace {

using reference::CfaRect;
using testing::Each;
using testing::ElementsAre;

constexpr int RGGB = reference::CFA_GRID_RGGB;

struct Frame {
  int w, h;
  std::vector<uint8_t> samples;
  Frame(int width, int height, uint8_t value)
      : w(width), h(height), samples(static_cast<size_t>(w * h), value) {}
  uint8_t& at(int x, int y) { return samples[static_cast<size_t>(y * w + x)]; }
};

Frame noise(int w, int h, uint32_t seed = 99) {
  Frame frame(w, h, 0);
  uint32_t state = seed;
  for (uint8_t& sample : frame.samples) {
    state = state * 1664525 + 1013904223;
    sample = static_cast<uint8_t>(state >> 24);
  }
  return frame;
}

// Red, green, blue of a region that was 0x55 before, with `rim` rows of the same above and below.
struct Result {
  int32_t status;
  int width, rim;
  std::vector<uint8_t> rgb;
  std::vector<int> at(int x, int y) const {
    const size_t k = static_cast<size_t>(3 * ((y + rim) * width + x));
    return {rgb[k], rgb[k + 1], rgb[k + 2]};
  }
};

Result demosaic(const Frame& frame, int grid, CfaRect roi) {
  const int rim = 8;
  Result out{0, roi.width, rim, {}};
  out.rgb.assign(static_cast<size_t>(3 * roi.width * (roi.height + 2 * rim)), 0x55);
  out.status = reference::ippiDemosaicAHD_8u_C1C3R(frame.samples.data(), roi, {frame.w, frame.h},
                                                   frame.w, out.rgb.data() + 3 * roi.width * rim,
                                                   3 * roi.width, grid, nullptr, 0);
  return out;
}

TEST(ReferenceAhd, RejectsInOrder) {
  const Frame frame = noise(10, 10);
  uint8_t out[300] = {};
  const auto status = [&](const uint8_t* src, int w, int h, int grid) {
    return reference::ippiDemosaicAHD_8u_C1C3R(src, {0, 0, 5, 5}, {w, h}, 10, out, 15, grid,
                                               nullptr, 0);
  };
  EXPECT_EQ(status(nullptr, 4, 4, 9), -8);
  EXPECT_EQ(status(frame.samples.data(), 4, 100, 9), -6);
  EXPECT_EQ(status(frame.samples.data(), 5, 5, 4), -5);
  EXPECT_THAT(out, Each(0));
  EXPECT_EQ(status(frame.samples.data(), 5, 5, 0), 0);
}

TEST(ReferenceAhd, KeepsAFlat) {
  for (int grid = 0; grid < 4; ++grid) {
    const Result out = demosaic(Frame(14, 13, 200), grid, {0, 0, 14, 13});
    for (int y = 0; y < 13; ++y)
      for (int x = 0; x < 14; ++x) EXPECT_THAT(out.at(x, y), Each(200));
  }
}

TEST(ReferenceAhd, NeverAltersASensedSample) {
  Frame frame = noise(15, 14);
  const Result out = demosaic(frame, RGGB, {0, 0, 15, 14});
  for (int y = 0; y < 14; ++y) {
    for (int x = 0; x < 15; ++x) {
      const size_t own = x % 2 != y % 2 ? 1 : y % 2 == 0 ? 0 : 2;
      EXPECT_EQ(out.at(x, y)[own], frame.at(x, y));
    }
  }
}

// A red site with the same neighbours along its row and along its column, so that both images
// have the same green there: 10 and 20 beside it, `far` at the reds two away.
int greenOf(uint8_t red, uint8_t far, uint8_t otherFar) {
  Frame frame(24, 24, 60);
  frame.at(12, 12) = red;
  frame.at(10, 12) = frame.at(12, 10) = far;
  frame.at(14, 12) = frame.at(12, 14) = otherFar;
  frame.at(11, 12) = frame.at(12, 11) = 10;
  frame.at(13, 12) = frame.at(12, 13) = 20;
  return demosaic(frame, RGGB, {0, 0, 24, 24}).at(12, 12)[1];
}

TEST(ReferenceAhd, HoldsGreenBetweenItsTwoNeighbours) {
  EXPECT_EQ(greenOf(0, 100, 100), 10);  // ((0 - 200) >> 2) + 15 = -35
  EXPECT_EQ(greenOf(100, 0, 0), 20);    // 50 + 15
  EXPECT_EQ(greenOf(50, 50, 50), 15);
  EXPECT_EQ(greenOf(50, 51, 50), 14);  // -1 >> 2 is -1
}

// A gray scene that changes along one axis only: the image that follows the other axis is exact.
TEST(ReferenceAhd, ChoosesTheImageThatIsEven) {
  const Frame line = noise(24, 1);
  Frame upright(24, 20, 0), lying(20, 24, 0);
  for (int k = 0; k < 24; ++k)
    for (int along = 0; along < 20; ++along)
      upright.at(k, along) = lying.at(along, k) = line.samples[static_cast<size_t>(k)];
  const Result columns = demosaic(upright, RGGB, {0, 0, 24, 20});
  const Result rows = demosaic(lying, RGGB, {0, 0, 20, 24});
  for (int k = 0; k < 24; ++k) {
    for (int along = 0; along < 20; ++along) {
      EXPECT_THAT(columns.at(k, along), Each(line.samples[static_cast<size_t>(k)]));
      EXPECT_THAT(rows.at(along, k), Each(line.samples[static_cast<size_t>(k)]));
    }
  }
}

// The running choice restarts where a rectangle's rows begin, so a region of one pixel gives what
// the whole frame gives there. RGGB, 34 by 30: the interior begins at (6, 6) and is 22 by 18, the
// right band begins at column 28.
TEST(ReferenceAhd, StartsTheChoiceAfreshInEveryRectangle) {
  for (uint32_t seed = 0; seed < 10; ++seed) {
    const Frame frame = noise(34, 30, seed);
    const Result whole = demosaic(frame, RGGB, {0, 0, 34, 30});
    const auto expectFresh = [&](int x, int y) {
      EXPECT_EQ(demosaic(frame, RGGB, {x, y, 1, 1}).at(0, 0), whole.at(x, y)) << x << ' ' << y;
    };
    for (int y = 0; y < 30; ++y) expectFresh(0, y);
    for (int y = 6; y < 24; ++y) {
      expectFresh(6, y);
      expectFresh(28, y);
    }
  }
}

TEST(ReferenceAhd, ClampsTheOriginBeforeTheSize) {
  const Frame frame = noise(30, 12);
  const Result moved = demosaic(frame, RGGB, {-3, -2, 10, 6});
  EXPECT_EQ(moved.rgb, demosaic(frame, RGGB, {0, 0, 10, 6}).rgb);
}

TEST(ReferenceAhd, WritesNoPixelOutsideTheRegion) {
  const Frame frame = noise(34, 34);
  for (const CfaRect& roi : {CfaRect{30, 30, 3, 3}, CfaRect{4, 0, 8, 3}, CfaRect{0, 31, 3, 3},
                             CfaRect{40, 2, 3, 3}, CfaRect{2, 34, 3, 3}}) {
    const Result out = demosaic(frame, RGGB, roi);
    EXPECT_EQ(out.status, 0);
    for (int y = -out.rim; y < 0; ++y) EXPECT_THAT(out.at(0, y), Each(0x55));
    for (int y = 3; y < 3 + out.rim; ++y) EXPECT_THAT(out.at(0, y), Each(0x55));
    if (roi.x >= 34 || roi.y >= 34) {
      EXPECT_THAT(out.rgb, Each(0x55));
    }
  }
}

// Five by five: one reflection of column 9 gives -1, which reads as column 0.
TEST(ReferenceAhd, StaysInsideAFrameOfFive) {
  const Frame frame = noise(5, 5);
  const Result out = demosaic(frame, RGGB, {0, 0, 5, 5});
  EXPECT_EQ(out.status, 0);
  for (int y = 0; y < 5; ++y)
    EXPECT_EQ(out.at(2, y)[y % 2 == 0 ? 0 : 1], frame.samples[static_cast<size_t>(y * 5 + 2)]);
}

// The image chosen at each red and blue site of a 16-bit frame of high contrast, each a region of
// its own, as a separate model of the formulas computes it: - along the row, | along the column, =
// a tie, which is the row; . a green site or one where both images have the same green.
TEST(ReferenceAhd, ChoosesAsTheModelDoes) {
  const int W = 16, H = 14;
  const char* const choices[H] = {"..|.-.|.=.|.|.=.", ".|.|.|.|.-.|.|.|", "|.|.|.|.-.-.-.-.",
                                  ".=.|.|.|.-.|.|.|", "-.|.|.|.-.-.|.|.", ".-.|.|...|.|.|..",
                                  "-.|.|.-.-.-.|.|.", ".=.|.|.=.-...|..", "|.|.-.|.|.-.=.-.",
                                  ".-.-.|.|.|...-..", "|.|.-.|.|.-.-...", ".=.-.|.|.|.-.-.-",
                                  "|.|.=.|.|.-.-.-.", ".|.-.|.|.=.-...-"};
  std::vector<uint16_t> samples(W * H);
  uint32_t state = 7;
  for (uint16_t& sample : samples) {
    state = state * 1664525 + 1013904223;
    sample = static_cast<uint16_t>(state >> 31 != 0 ? 65535 : (state >> 16) & 0x3FFF);
  }
  const auto S = [&](int x, int y) -> int {
    const auto mirror = [](int c, int L) { return c < 0 ? -c : c > L ? 2 * L - c : c; };
    return samples[static_cast<size_t>(mirror(y, H - 1) * W + mirror(x, W - 1))];
  };
  for (int y = 0; y < H; ++y) {
    for (int x = 0; x < W; ++x) {
      const char choice = choices[y][x];
      if (choice == '.') continue;
      const int dx = choice == '|' ? 0 : 1, dy = 1 - dx;
      const int a = S(x - dx, y - dy), b = S(x + dx, y + dy);
      const int bend = (2 * S(x, y) - S(x - 2 * dx, y - 2 * dy) - S(x + 2 * dx, y + 2 * dy)) >> 2;
      const int green = std::clamp(bend + ((a + b) >> 1), std::min(a, b), std::max(a, b));
      uint16_t rgb[3] = {};
      reference::ippiDemosaicAHD_16u_C1C3R(samples.data(), {x, y, 1, 1}, {W, H}, 2 * W, rgb, 6,
                                           RGGB, nullptr, 0);
      EXPECT_EQ(rgb[1], green) << x << ' ' << y;
    }
  }
}

}  // namespace
