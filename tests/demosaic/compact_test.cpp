// Near neighbours and the homogeneity-directed function: how they call the primitives, and the
// compact image that they leave.
#include "common/mosaic.h"
#include "tests/demosaic/demosaiced.h"
#include "tests/levels.h"
#include "vistrel/image_functions.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;

VISTREL_LEVEL_SUITE(CompactImage);

enum class By { nearNeighbor, homogeneity };
constexpr By kBoth[] = {By::nearNeighbor, By::homogeneity};

void demosaic(By by, auto... arguments) {
  if (by == By::nearNeighbor)
    ImageColorNearNeighbor(arguments...);
  else
    ImageColorDemosaicAHD(arguments...);
}

struct CompactRegion {
  uint32_t x, y, width, height;
};

constexpr unsigned kBefore = 0xEE;  // what the work buffer holds

// Blue, green, red of the region's pixels, in the source's bits.
template <class T>
std::vector<T> compact(By by, const Frame<T>& frame, uint32_t nBayer, CompactRegion r,
                       uint32_t bits = 8) {
  constexpr unsigned slot = 9;
  Frame<T> source = frame;
  std::vector<T> work = flat<T>(size_t{3} * frame.width * (frame.height + r.height), kBefore);
  Canvas<T> canvas(size_t{3} * r.width * r.height);
  uint8_t* const pDst = reinterpret_cast<uint8_t*>(canvas.data());
  g_pwBGRBuff[slot] = reinterpret_cast<uint16_t*>(work.data());
  if constexpr (sizeof(T) == 1)
    demosaic(by, slot, frame.width, nBayer, 0u, unsigned{IMG_FMT_BGR24}, r.x, r.y, r.width,
             r.height, source.samples.data(), pDst);
  else
    demosaic(by, slot, frame.width, nBayer, 0u, unsigned{IMG_FMT_BGR48}, 0u, r.x, r.y, r.width,
             r.height, source.samples.data(), pDst, 3 * bits, bits);
  g_pwBGRBuff[slot] = nullptr;
  const std::vector<T> image = canvas.samples();
  EXPECT_TRUE(std::equal(image.begin(), image.end(), work.begin()));
  return image;
}

// What each filter lets through: red 200, green 100, blue 50.
template <class T>
Frame<T> plainColours(uint32_t nBayer, uint32_t w, uint32_t h) {
  Frame<T> frame(w, h, 100);
  for (uint32_t y = 0; y < h; ++y)
    for (uint32_t x = 0; x < w; ++x) {
      const unsigned row = rowParity(nBayer, y), column = columnParity(nBayer, x);
      if (row != column) frame.at(x, y) = row == 1 ? 50 : 200;
    }
  return frame;
}

template <class T>
void expectPlain(const std::vector<T>& image) {
  for (size_t i = 0; i < image.size(); ++i)
    ASSERT_EQ(image[i], i % 3 == 0 ? 50 : i % 3 == 1 ? 100 : 200) << i;
}

TEST_P(CompactImage, HasBlueFirstInEveryPhase) {
  for (By by : kBoth)
    for (uint32_t nBayer = 0; nBayer < 4; ++nBayer) {
      expectPlain(compact(by, plainColours<uint8_t>(nBayer, 37, 14), nBayer, {0, 0, 37, 14}));
      for (uint32_t bits : {8u, 10u, 12u, 16u})
        expectPlain(
            compact(by, plainColours<uint16_t>(nBayer, 37, 14), nBayer, {0, 0, 37, 14}, bits));
    }
}

TEST(BayerOffset, IsTheGridWithRedAndBlueExchanged) {
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_GRBG), 2u);
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_BGGR), 1u);
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_RGGB), 0u);
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_GBRG), 3u);
  for (unsigned other : {4u, 5u, 0xFFFFFFFFu}) EXPECT_EQ(VST2IPPBayerOffset(other), 2u);
}

// (1 + 2 + 1) >> 1 of all sixteen bits is 2. Samples of ten bits are taken 64 times as large: of
// (64 + 128 + 1) >> 1 a 64th is left, cut.
TEST_P(CompactImage, RoundsAtTheScaleOfSixteenBits) {
  Frame<uint16_t> frame(24, 8, 0);
  for (uint32_t x = 0; x < 24; x += 4) {
    frame.at(x, 3) = 1;  // left and right of the green sites of this row
    frame.at(x + 2, 3) = 2;
  }
  const auto blueAt = [&](uint32_t x, uint32_t bits) {
    return compact(By::nearNeighbor, frame, BAYER_GRBG, {0, 0, 24, 8}, bits).at(3 * (3 * 24 + x));
  };
  for (uint32_t x : {1u, 9u, 21u}) {
    EXPECT_EQ(blueAt(x, 16), 2);
    EXPECT_EQ(blueAt(x, 10), 1);
  }
}

// Sixteen bits are passed on as they are.
TEST_P(CompactImage, OfSixteenBitsKeepsEverySensedBit) {
  Frame<uint16_t> frame(20, 10, 0);
  frame.samples = noise<uint16_t>(frame.samples.size(), 65535, 1);
  for (By by : kBoth) {
    const auto image = compact(by, frame, BAYER_GRBG, {0, 0, 20, 10}, 16);
    for (uint32_t y = 0; y < 10; ++y)
      for (uint32_t x = y & 1; x < 20; x += 2)
        EXPECT_EQ(image.at(3 * (20 * y + x) + 1), frame.at(x, y));  // green
  }
}

// Rows 2 to 5 of the source come first; nothing follows them.
// quirk: rows-below-origin
TEST_P(CompactImage, ARegionsFirstRowLeavesFewerRows) {
  Frame<uint8_t> frame = plainColours<uint8_t>(BAYER_RGGB, 24, 6);
  for (By by : kBoth) {
    const auto image = compact(by, frame, BAYER_RGGB, {0, 2, 24, 6});
    const auto stale = image.begin() + 24 * 4 * 3;
    expectPlain(std::vector<uint8_t>(image.begin(), stale));
    EXPECT_THAT(std::vector<uint8_t>(stale, image.end()), Each(kBefore));
  }
  frame.at(8, 2) = 255;  // red
  for (By by : kBoth) EXPECT_EQ(compact(by, frame, BAYER_RGGB, {0, 2, 24, 6}).at(3 * 8 + 2), 255);
}

TEST_P(CompactImage, AFirstRowPastTheRegionsHeightConvertsNothing) {
  for (By by : kBoth)
    for (uint32_t y : {6u, 7u})
      EXPECT_THAT(compact(by, plainColours<uint8_t>(BAYER_RGGB, 24, 6), BAYER_RGGB, {0, y, 24, 6}),
                  Each(kBefore));
}

// The phase is that of the frame's first column.
TEST_P(CompactImage, ARegionsFirstColumnIsOneOfTheFrames) {
  for (By by : kBoth)
    for (uint32_t nBayer = 0; nBayer < 4; ++nBayer)
      for (uint32_t x : {1u, 2u, 7u}) {
        expectPlain(compact(by, plainColours<uint8_t>(nBayer, 30, 9), nBayer, {x, 0, 20, 9}));
        expectPlain(compact(by, plainColours<uint16_t>(nBayer, 30, 9), nBayer, {x, 0, 20, 9}, 12));
      }
}

TEST_P(CompactImage, SmallFramesShowWhatTheWorkBufferHeld) {
  EXPECT_THAT(
      compact(By::nearNeighbor, plainColours<uint8_t>(BAYER_GRBG, 8, 1), BAYER_GRBG, {0, 0, 8, 1}),
      Each(kBefore));
  EXPECT_THAT(
      compact(By::nearNeighbor, plainColours<uint8_t>(BAYER_GRBG, 1, 8), BAYER_GRBG, {0, 0, 1, 8}),
      Each(kBefore));
  expectPlain(
      compact(By::nearNeighbor, plainColours<uint8_t>(BAYER_GRBG, 2, 2), BAYER_GRBG, {0, 0, 2, 2}));
  EXPECT_THAT(
      compact(By::homogeneity, plainColours<uint8_t>(BAYER_GRBG, 8, 4), BAYER_GRBG, {0, 0, 8, 4}),
      Each(kBefore));
  EXPECT_THAT(
      compact(By::homogeneity, plainColours<uint8_t>(BAYER_GRBG, 4, 8), BAYER_GRBG, {0, 0, 4, 8}),
      Each(kBefore));
  expectPlain(
      compact(By::homogeneity, plainColours<uint8_t>(BAYER_GRBG, 5, 5), BAYER_GRBG, {0, 0, 5, 5}));
  // The frame counts, not the region.
  expectPlain(
      compact(By::homogeneity, plainColours<uint8_t>(BAYER_GRBG, 8, 5), BAYER_GRBG, {3, 0, 1, 5}));
}

}  // namespace
}  // namespace vistrel::core::test
