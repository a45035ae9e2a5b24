#include "tests/reference/cfa.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using reference::CfaRect;
using testing::Each;
using testing::ElementsAre;

struct Frame {
  int w, h;
  std::vector<uint8_t> samples;
  Frame(int width, int height, uint8_t value)
      : w(width), h(height), samples(static_cast<size_t>(w * h), value) {}
  uint8_t& at(int x, int y) { return samples[static_cast<size_t>(y * w + x)]; }
};

Frame noise(int w, int h) {
  Frame frame(w, h, 0);
  for (size_t k = 0; k < frame.samples.size(); ++k)
    frame.samples[k] = static_cast<uint8_t>((k * 2654435761U + 77) >> 9);
  return frame;
}

// Red, green, blue of a rectangle that was 0x55 before.
struct Result {
  int32_t status;
  int width;
  std::vector<uint8_t> rgb;
  std::vector<int> at(int x, int y) const {
    const size_t k = static_cast<size_t>(3 * (y * width + x));
    return {rgb[k], rgb[k + 1], rgb[k + 2]};
  }
};

Result convert(const Frame& frame, int grid, CfaRect roi, int interpolation = 0) {
  Result out{0, roi.width,
             std::vector<uint8_t>(static_cast<size_t>(3 * roi.width * roi.height), 0x55)};
  out.status =
      reference::ippiCFAToRGB_8u_C1C3R(frame.samples.data(), roi, {frame.w, frame.h}, frame.w,
                                       out.rgb.data(), 3 * roi.width, grid, interpolation);
  return out;
}

Result convert(const Frame& frame, int grid) {
  return convert(frame, grid, {0, 0, frame.w, frame.h});
}

TEST(ReferenceCfaToRgb, MirrorsAFrameOfTwoByTwo) {
  Frame frame(2, 2, 0);
  frame.samples = {10, 21, 40, 90};  // blue, green, green, red
  const Result out = convert(frame, reference::CFA_GRID_BGGR);
  EXPECT_EQ(out.status, 0);
  EXPECT_THAT(out.at(0, 0), ElementsAre(90, (21 + 40 + 1) >> 1, 10));
  EXPECT_THAT(out.at(1, 0), ElementsAre(90, 21, 10));
  EXPECT_THAT(out.at(0, 1), ElementsAre(90, 40, 10));
  EXPECT_THAT(out.at(1, 1), ElementsAre(90, (21 + 40 + 1) >> 1, 10));
}

TEST(ReferenceCfaToRgb, RejectsInOrder) {
  const Frame frame = noise(6, 6);
  const CfaRect all = {0, 0, 6, 6};
  uint8_t out[108] = {};
  const auto status = [&](const uint8_t* src, uint8_t* dst, int w, int h, int grid) {
    return reference::ippiCFAToRGB_8u_C1C3R(src, all, {w, h}, 6, dst, 18, grid, 0);
  };
  EXPECT_EQ(status(nullptr, out, 1, 1, 9), -8);
  EXPECT_EQ(status(frame.samples.data(), nullptr, 1, 1, 9), -8);
  EXPECT_EQ(status(frame.samples.data(), out, 1, 100, 9), -6);
  EXPECT_EQ(status(frame.samples.data(), out, 6, 1, 0), -6);
  EXPECT_EQ(status(frame.samples.data(), out, 6, 6, 4), -5);
  EXPECT_THAT(out, Each(0));
}

// A vertical edge about (2, 2): up and down agree, left and right do not. Only the centre of five
// by five pixels has the neighbourhood that the choice takes.
TEST(ReferenceCfaToRgb, FollowsTheEdgeInsideOnly) {
  Frame frame(5, 5, 10);
  for (int y = 0; y < 5; ++y) frame.at(3, y) = frame.at(4, y) = 200;
  const Result out = convert(frame, reference::CFA_GRID_RGGB);
  EXPECT_EQ(out.at(2, 2)[1], 10);
  EXPECT_EQ(out.at(2, 0)[1], (10 + 200 + 2 * 10 + 2) >> 2);
  EXPECT_EQ(out.at(1, 1)[1], 10);
  EXPECT_EQ(out.at(3, 1)[1], (200 + 200 + 10 + 200 + 2) >> 2);
  // Flat gradients: the mean of four.
  Frame peak(5, 5, 10);
  peak.at(2, 1) = 14;
  EXPECT_EQ(convert(peak, reference::CFA_GRID_RGGB).at(2, 2)[1], (44 + 2) >> 2);
}

TEST(ReferenceCfaToRgb, IgnoresTheInterpolationArgument) {
  const Frame frame = noise(9, 8);
  EXPECT_EQ(convert(frame, 2, {0, 0, 9, 8}, 7).rgb, convert(frame, 2).rgb);
}

// A pixel is the same in any rectangle as in the whole frame.
TEST(ReferenceCfaToRgb, DoesNotDependOnTheRectangle) {
  const Frame frame = noise(9, 8);
  for (int grid = 0; grid < 4; ++grid) {
    const Result whole = convert(frame, grid);
    for (int y = 0; y < 8; ++y) {
      for (int x = 0; x < 9; ++x) {
        const Result part = convert(frame, grid, {x, y, 20, 20});
        EXPECT_EQ(part.at(0, 0), whole.at(x, y));
        EXPECT_EQ(part.at(8 - x, 7 - y), whole.at(8, 7));
        if (x < 8) {
          EXPECT_THAT(part.at(9 - x, 0), Each(0x55));
        }
      }
    }
  }
}

TEST(ReferenceCfaToRgb, WritesNothingPastTheFarSides) {
  const Frame frame = noise(9, 8);
  for (const CfaRect& roi : {CfaRect{9, 0, 3, 3}, CfaRect{0, 8, 3, 3}, CfaRect{20, 20, 3, 3}}) {
    const Result out = convert(frame, 0, roi);
    EXPECT_EQ(out.status, 0);
    EXPECT_THAT(out.rgb, Each(0x55));
  }
}

TEST(ReferenceCfaToRgb, TakesSixteenBitSamplesAsItTakesBytes) {
  const Frame frame = noise(9, 8);
  const std::vector<uint16_t> samples16(frame.samples.begin(), frame.samples.end());
  std::vector<uint16_t> out(9 * 8 * 3);
  EXPECT_EQ(reference::ippiCFAToRGB_16u_C1C3R(samples16.data(), {0, 0, 9, 8}, {9, 8}, 18,
                                              out.data(), 54, 3, 0),
            0);
  const Result bytes = convert(frame, 3);
  EXPECT_TRUE(std::equal(out.begin(), out.end(), bytes.rgb.begin()));
}

TEST(ReferenceBayerOffset, ExchangesRedAndBlue) {
  const unsigned expected[6] = {2, 1, 0, 3, 2, 2};
  for (unsigned nBayer = 0; nBayer < 6; ++nBayer)
    EXPECT_EQ(reference::VST2IPPBayerOffset(nBayer), expected[nBayer]);
}

}  // namespace
