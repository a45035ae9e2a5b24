// The edge demosaic as a whole: thresholds, sides, repeated rows, phase, and what its blocks do
// beyond the end of a row.
#include <algorithm>
#include <array>

#include "streams/registry.h"
#include "tests/demosaic/by_name.h"
#include "tests/demosaic/demosaiced.h"
#include "tests/levels.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(Edge);

struct EdgeRegion {
  uint32_t x, y, width, height;
};

// A region after the edge demosaic, read from the work buffer, and the result's samples.
template <class T>
class Edged {
 public:
  static constexpr T kBefore = 0xEE;

  Edged(const Frame<T>& frame, uint32_t nBayer, uint32_t nThreshold, EdgeRegion r, uint32_t bits)
      : stride_(3 * r.width + 12), work_(flat<T>(size_t{stride_} * (r.height + r.y + 8), kBefore)) {
    constexpr unsigned slot = 9;
    Canvas<T> canvas(size_t{3} * r.width * r.height);
    uint8_t* const pDst = reinterpret_cast<uint8_t*>(canvas.data());
    g_pwBGRBuff[slot] = reinterpret_cast<uint16_t*>(work_.data());
    g_anBGRBytes[slot] = work_.size() * sizeof(T);
    if constexpr (sizeof(T) == 1)
      ImageColorDemosaicEx(slot, nThreshold, frame.width, nBayer, 0, IMG_FMT_BGR24, r.x, r.y,
                           r.width, r.height, frame.samples.data(), pDst);
    else
      ImageColorDemosaicEx(slot, nThreshold, frame.width, nBayer, 0, IMG_FMT_BGR48, 0, r.x, r.y,
                           r.width, r.height, frame.samples.data(), pDst, 3 * bits, bits);
    g_pwBGRBuff[slot] = nullptr;
    g_anBGRBytes[slot] = 0;
    image = canvas.samples();
  }
  Edged(const Frame<T>& frame, uint32_t nBayer, uint32_t nThreshold, uint32_t bits = 8)
      : Edged(frame, nBayer, nThreshold, {0, 0, frame.width, frame.height}, bits) {}

  // Blue, green, red of a pixel in the work buffer.
  std::array<int, 3> at(int x, int y) const {
    const auto i = static_cast<size_t>((y + 4) * static_cast<int>(stride_) + 3 * (x + 2));
    return {work_.at(i), work_.at(i + 1), work_.at(i + 2)};
  }
  std::vector<T> rows(uint32_t from, uint32_t to) const {
    return {work_.begin() + ptrdiff_t(from) * stride_, work_.begin() + ptrdiff_t(to) * stride_};
  }

  std::vector<T> image;

 private:
  uint32_t stride_;
  std::vector<T> work_;
};

// What each filter lets through, of a frame with red in its upper left corner.
template <class T>
Frame<T> plainColours(uint32_t w, uint32_t h, unsigned red, unsigned green, unsigned blue) {
  Frame<T> frame(w, h, green);
  for (uint32_t y = 0; y < h; ++y)
    for (uint32_t x = y & 1; x < w; x += 2) frame.at(x, y) = static_cast<T>(y & 1 ? blue : red);
  return frame;
}

template <class T>
Frame<T> noiseFrame(uint32_t w, uint32_t h, unsigned top, unsigned seed) {
  Frame<T> frame(w, h, 0);
  frame.samples = noise<T>(frame.samples.size(), top, seed);
  return frame;
}

// The green of a site that exceeds all others by `rise`.
template <class T>
int peak(unsigned rise, uint32_t nThreshold, uint32_t bits) {
  Frame<T> frame(16, 8, 0);
  frame.at(8, 4) = static_cast<T>(rise);
  return Edged<T>(frame, BAYER_GRBG, nThreshold, bits).at(8, 4)[1];
}

TEST_P(Edge, AThresholdOfZeroKeepsEveryGreen) {
  for (unsigned rise : {1u, 63u, 255u}) EXPECT_EQ(peak<uint8_t>(rise, 0, 8), rise);
}

TEST_P(Edge, TheWidestThresholdOfBytesIs255And191And127And63) {
  EXPECT_EQ(peak<uint8_t>(255, 254, 8), 255);
  EXPECT_EQ(peak<uint8_t>(255, 255, 8), 221);
  EXPECT_EQ(peak<uint8_t>(192, 255, 8), 48 + 96 + 24);
  EXPECT_EQ(peak<uint8_t>(191, 255, 8), 95 + 47);
  EXPECT_EQ(peak<uint8_t>(128, 255, 8), 64 + 32);
  EXPECT_EQ(peak<uint8_t>(127, 255, 8), 31 + 15 + 31);
  EXPECT_EQ(peak<uint8_t>(64, 255, 8), 16 + 8 + 16);
  EXPECT_EQ(peak<uint8_t>(63, 255, 8), 31);
}

// 4095 * 100 / 255 = 1605, three quarters 1203, half 802, a quarter 401.
TEST_P(Edge, TheThresholdOfSixteenBitSamplesIsScaledToTheirBits) {
  EXPECT_EQ(peak<uint16_t>(1606, 100, 12), 1606);
  EXPECT_EQ(peak<uint16_t>(1605, 100, 12), 401 + 802 + 200);
  EXPECT_EQ(peak<uint16_t>(1204, 100, 12), 301 + 602 + 150);
  EXPECT_EQ(peak<uint16_t>(1203, 100, 12), 601 + 300);
  EXPECT_EQ(peak<uint16_t>(803, 100, 12), 401 + 200);
  EXPECT_EQ(peak<uint16_t>(802, 100, 12), 200 + 100 + 200);
  EXPECT_EQ(peak<uint16_t>(402, 100, 12), 100 + 50 + 100);
  EXPECT_EQ(peak<uint16_t>(401, 100, 12), 200);
  EXPECT_EQ(peak<uint16_t>(32767, 254, 15), 32767);
  EXPECT_EQ(peak<uint16_t>(32767, 255, 15), 8191 + 16383 + 4095);
}

// A flat of 100 in twelve, ten and sixteen bits: lanes of either width.
// quirk: zero-sides
TEST_P(Edge, ZerosBesideTheImageDarkenItsSidesButNotTopAndBottom) {
  const auto check = [](auto edged) {
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 16; ++x) {
        // Green there has a range of 100, a mean of 75: three quarters of it.
        const bool isSideGreen = y % 2 == 1 ? x == 0 : x == 15;
        EXPECT_THAT(edged.at(x, y), Each(isSideGreen ? 37 + 18 + 25 : 100)) << x << ' ' << y;
      }
  };
  check(Edged<uint8_t>(Frame<uint8_t>(16, 8, 100), BAYER_RGGB, 255));
  const auto scaled = [](uint32_t bits) { return 65280u / ((1u << bits) - 1); };  // to about 255
  check(Edged<uint16_t>(Frame<uint16_t>(16, 8, 100), BAYER_RGGB, scaled(10), 10));
  check(Edged<uint16_t>(Frame<uint16_t>(16, 8, 100), BAYER_RGGB, scaled(12), 12));
}

TEST_P(Edge, TheRowAboveTheFirstIsTheSecond) {
  Frame<uint8_t> frame(16, 8, 100);
  frame.at(6, 1) = 60;  // green above and below red
  frame.at(6, 6) = 50;
  EXPECT_EQ(Edged<uint8_t>(frame, BAYER_RGGB, 0).at(6, 0)[1], 60);
  EXPECT_EQ(Edged<uint8_t>(frame, BAYER_BGGR, 0).at(6, 0)[1], 60);
  EXPECT_EQ(Edged<uint8_t>(frame, BAYER_GRBG, 0).at(6, 7)[1], 50);
}

TEST_P(Edge, FirstAndLastPairOfRowsGoOn) {
  const Frame<uint8_t> frame = noiseFrame<uint8_t>(16, 6, 255, 1);
  Frame<uint8_t> longer(16, 10, 0);
  for (uint32_t y = 0; y < 10; ++y)
    for (uint32_t x = 0; x < 16; ++x)
      longer.at(x, y) = frame.samples.at((y < 2 ? y : y < 8 ? y - 2 : y - 4) * 16 + x);
  const Edged<uint8_t> a(frame, BAYER_GBRG, 40), b(longer, BAYER_GBRG, 40);
  for (int y = 0; y < 6; ++y)
    for (int x = 0; x < 16; ++x) EXPECT_EQ(a.at(x, y), b.at(x, y + 2));
}

TEST_P(Edge, ResultsAreLimitedToTheSourcesBits) {
  // Rows of red at 400, one at 0; green of even rows 800, of odd rows 0: blue is 800 + 1023.
  Frame<uint16_t> frame(16, 10, 0);
  for (uint32_t y = 0; y < 10; ++y)
    for (uint32_t x = 0; x < 16; ++x)
      frame.at(x, y) = y % 2 == 1 ? (x % 2 == 1 ? 1023 : 0) : x % 2 == 1 ? 800 : y == 4 ? 0 : 400;
  EXPECT_THAT(Edged<uint16_t>(frame, BAYER_RGGB, 0, 10).at(6, 4), ElementsAre(1023, 800, 0));
  EXPECT_THAT(Edged<uint16_t>(frame, BAYER_RGGB, 0, 12).at(6, 4), ElementsAre(1823, 800, 0));
  EXPECT_THAT(Edged<uint16_t>(frame, BAYER_RGGB, 0, 16).at(6, 4), ElementsAre(1823, 800, 0));
  for (auto& sample : frame.samples) sample = static_cast<uint16_t>(1023 - sample);
  EXPECT_THAT(Edged<uint16_t>(frame, BAYER_RGGB, 0, 12).at(6, 4), ElementsAre(0, 223, 1023));
}

// Red, green, blue of 200, 100, 50. Pixels 0, 1, 2 of a lower row are what the upper row's last
// block computes there: with the sites of that row, and the samples that lie beside them.
// quirk: wrapped-blocks
TEST_P(Edge, TheLastBlockOverwritesTheBeginningOfTheLowerRow) {
  const auto lowerRow = [](uint32_t w) {
    const Edged<uint8_t> edged(plainColours<uint8_t>(w, 8, 200, 100, 50), BAYER_RGGB, 0);
    std::vector<std::array<int, 3>> pixels;
    for (int x = 0; x < 4; ++x) {
      EXPECT_EQ(edged.at(x, 1), edged.at(x, 3));
      EXPECT_THAT(edged.at(x, 2), ElementsAre(x == 0 ? 75 : 50, 100, 200));
      pixels.push_back(edged.at(x, 3));
    }
    return pixels;
  };
  using P = std::array<int, 3>;
  const P right{50, 100, 200}, rightBesideZeros{75, 100, 200}, beside{200, 100, 75};
  EXPECT_THAT(lowerRow(9), ElementsAre(beside, P{200, 100, 50}, P{200, 100, 50}, right));
  EXPECT_THAT(lowerRow(10), ElementsAre(P{225, 200, 100}, P{100, 50, 0}, right, right));
  EXPECT_THAT(lowerRow(11), ElementsAre(beside, right, right, right));
  for (uint32_t w : {8u, 12u, 13u, 14u, 15u, 16u})
    EXPECT_THAT(lowerRow(w), ElementsAre(rightBesideZeros, right, right, right)) << w;
  for (uint32_t w : {17u, 33u, 65u, 129u}) EXPECT_EQ(lowerRow(w), lowerRow(9)) << w;
}

// Its lower row comes after it, and no pixel sees beyond the zeros on either side.
TEST_P(Edge, TheOnlyBlockOfARowLeavesTheLowerOneWhole) {
  for (uint32_t w : {1u, 2u, 3u}) {
    const Frame<uint8_t> frame = noiseFrame<uint8_t>(w, 8, 255, w);
    Frame<uint8_t> wider(16, 8, 0);
    for (uint32_t y = 0; y < 8; ++y)
      for (uint32_t x = 0; x < w; ++x) wider.at(x, y) = frame.samples.at(y * w + x);
    const Edged<uint8_t> alone(frame, BAYER_GRBG, 30), among(wider, BAYER_GRBG, 30);
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < static_cast<int>(w); ++x) EXPECT_EQ(alone.at(x, y), among.at(x, y));
  }
}

// quirk: edge-phase
TEST_P(Edge, TheFirstColumnHasThePhaseOfTheFrame) {
  const Frame<uint8_t> frame = noiseFrame<uint8_t>(17, 8, 255, 2);
  Frame<uint8_t> moved(16, 8, 0);
  for (uint32_t y = 0; y < 8; ++y)
    for (uint32_t x = 0; x < 16; ++x) moved.at(x, y) = frame.samples.at(y * 17 + x + 1);
  EXPECT_EQ(Edged<uint8_t>(frame, BAYER_GRBG, 40, {1, 0, 16, 8}, 8).image,
            Edged<uint8_t>(moved, BAYER_GRBG, 40).image);
}

TEST_P(Edge, TheImageLiesOnRowFourOfTheWorkBuffer) {
  const Frame<uint8_t> frame = noiseFrame<uint8_t>(16, 7, 255, 3);
  const Edged<uint8_t> edged(frame, BAYER_BGGR, 40);
  EXPECT_THAT(edged.rows(0, 4), Each(Edged<uint8_t>::kBefore));
  for (int y = 0; y < 7; ++y)
    for (int x = 0; x < 16; ++x)
      for (int c = 0; c < 3; ++c)
        EXPECT_EQ(edged.image.at(static_cast<size_t>(3 * (16 * y + x) + c)),
                  edged.at(x, y)[static_cast<size_t>(c)]);
}

// The row below an odd height completes its pair; nothing reads it.
TEST_P(Edge, AnOddHeightHasARowMoreInTheWorkBuffer) {
  const Edged<uint8_t> edged(Frame<uint8_t>(16, 7, 100), BAYER_BGGR, 0);
  for (int x = 1; x < 15; ++x) EXPECT_EQ(edged.at(x, 7)[1], 100);
  EXPECT_THAT(edged.at(8, 8), Each(Edged<uint8_t>::kBefore));
}

TEST_P(Edge, ARegionsFirstRowMovesTheResultAndNotTheSource) {
  const Frame<uint8_t> frame = noiseFrame<uint8_t>(16, 8, 255, 4);
  const Edged<uint8_t> whole(frame, BAYER_GRBG, 40);
  for (uint32_t y0 : {2u, 3u}) {
    const Edged<uint8_t> edged(frame, BAYER_GRBG, 40, {0, y0, 16, 8}, 8);
    const auto top = edged.image.begin() + ptrdiff_t{48} * y0;
    EXPECT_THAT(std::vector<uint8_t>(edged.image.begin(), top), Each(Edged<uint8_t>::kBefore));
    EXPECT_TRUE(std::equal(top, edged.image.end(), whole.image.begin() + ptrdiff_t{48} * y0));
  }
}

// Pairs of rows begin at the region's first row, so here the even rows are overwritten.
TEST_P(Edge, AnOddFirstRowPairsOtherRows) {
  const Frame<uint8_t> frame = plainColours<uint8_t>(9, 8, 200, 100, 50);
  const Edged<uint8_t> edged(frame, BAYER_RGGB, 0, {0, 1, 9, 8}, 8);
  EXPECT_THAT(edged.at(1, 3), ElementsAre(50, 100, 200));
  EXPECT_THAT(edged.at(1, 4), ElementsAre(200, 100, 50));
}

// Rows whose samples exceed 12 bits lie between rows whose samples do not. With a limit of 13 bits
// all are computed in wide lanes; a limit of 12 bits only caps the same values lower.
TEST_P(Edge, LargerSamplesAmongSmallOnesChangeNoOtherValue) {
  Frame<uint16_t> frame(37, 26, 0);
  uint32_t random = 7;
  for (uint32_t y = 0; y < frame.height; ++y)
    for (uint32_t x = 0; x < frame.width; ++x) {
      random = random * 1664525 + 1013904223;
      const bool isLarge = y == 9 || y == 10 || y == 18;
      frame.at(x, y) = static_cast<uint16_t>((random >> 20) + (isLarge ? 1500 : 0));
    }
  const Edged<uint16_t> capped(frame, BAYER_RGGB, 0, 12), whole(frame, BAYER_RGGB, 0, 13);
  for (int y = 0; y < 26; ++y)
    for (int x = 0; x < 37; ++x)
      for (size_t channel = 0; channel < 3; ++channel)
        EXPECT_EQ(capped.at(x, y)[channel], std::min(whole.at(x, y)[channel], 4095))
            << "column " << x << ", row " << y << ", channel " << channel;
}

}  // namespace
}  // namespace vistrel::core::test
