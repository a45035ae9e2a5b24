// Histograms and blocks, counted by hand.
#include "apps/look/frame_statistics.h"

#include <gmock/gmock.h>

#include "tests/apps/look/frame.h"

namespace vistrel::app {
namespace {

using ::testing::ElementsAre;

//  1  2  3
//  4  5  6
//  7  8  9
uint32_t counting(uint32_t x, uint32_t y) { return 3 * y + x + 1; }

uint64_t at(const Histogram& histogram, uint32_t value) { return histogram.at(value); }

TEST(Histograms, CountTheSamplesOfEachPlace) {
  const Frame frame(3, 3, 10, VISTREL_RGGB, counting);
  const auto places = histogramsOf(frame);
  EXPECT_THAT(
      (std::vector{countOf(places[0]), countOf(places[1]), countOf(places[2]), countOf(places[3])}),
      ElementsAre(4, 2, 2, 1));
  EXPECT_EQ(places[0].size(), 1024u);
  for (const uint32_t value : {1, 3, 7, 9}) EXPECT_EQ(at(places[0], value), 1u);
  for (const uint32_t value : {2, 8}) EXPECT_EQ(at(places[1], value), 1u);
  EXPECT_EQ(at(places[3], 5), 1u);
  EXPECT_EQ(countOf(sumOf(places)), 9u);
}

TEST(Histograms, OfARegionKeepTheFramesPlaces) {
  const Frame frame(3, 3, 8, VISTREL_RGGB, counting);
  const auto places = histogramsOf(frame, {1, 1, 2, 1});
  EXPECT_EQ(at(places[3], 5), 1u);
  EXPECT_EQ(at(places[2], 6), 1u);
  EXPECT_EQ(countOf(places[0]) + countOf(places[1]), 0u);
}

TEST(Histograms, ReadBytesRowsWithPaddingAndHighBits) {
  const unsigned char bytes[] = {1, 2, 99, 3, 4};
  vistrel_frame frame{};
  frame.samples = bytes;
  frame.size = sizeof bytes;
  frame.stride = 3;
  frame.width = frame.height = 2;
  frame.bytes_per_sample = 1;
  frame.bits = 8;
  EXPECT_EQ(at(histogramsOf(frame)[3], 4), 1u);

  const Frame high(1, 1, 12, VISTREL_MONO, [](uint32_t, uint32_t) { return 0xABC0; });
  vistrel_frame aligned = high;
  aligned.alignment = VISTREL_HIGH_BITS;
  EXPECT_EQ(at(histogramsOf(aligned)[0], 0xABC), 1u);
}

TEST(Histograms, ExcessBitsCountAsTheLargestValue) {
  const Frame frame(1, 1, 10, VISTREL_MONO, [](uint32_t, uint32_t) { return 5000; });
  EXPECT_EQ(at(histogramsOf(frame)[0], 1023), 1u);
}

TEST(Quantiles, AreTheFirstValueThatMoreDoNotExceed) {
  Histogram histogram(256);
  histogram[10] = histogram[20] = 1;
  histogram[30] = 2;
  EXPECT_EQ(quantile(histogram, 0), 10u);
  EXPECT_EQ(quantile(histogram, 0.25), 20u);
  EXPECT_EQ(quantile(histogram, 0.5), 30u);
  EXPECT_EQ(quantile(histogram, 0.99), 30u);
  EXPECT_EQ(quantile(Histogram(256), 0.5), 0u);
}

// Red 30, green 50 and 70, blue 110, from 10 to 110.
TEST(Blocks, HaveTheColoursOfEachPhase) {
  const uint32_t samples[4][4] = {
      {50, 30, 110, 70}, {110, 50, 70, 30}, {30, 50, 70, 110}, {50, 110, 30, 70}};
  for (const uint32_t phase : {VISTREL_GRBG, VISTREL_BGGR, VISTREL_RGGB, VISTREL_GBRG}) {
    const Frame frame(2, 2, 8, phase,
                      [&](uint32_t x, uint32_t y) { return samples[phase][2 * y + x]; });
    const auto blocks = blocksOf(frame, {10, 10, 10, 10}, 110);
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_THAT(blocks[0].colour, ElementsAre(0.2f, 0.5f, 1.0f)) << phase;
    EXPECT_TRUE(blocks[0].clipped);
    EXPECT_FALSE(blocksOf(frame, {}, 111)[0].clipped);
  }
}

TEST(Blocks, EachPlaceHasItsOwnBlack) {
  const Frame frame(2, 2, 8, VISTREL_RGGB, [](uint32_t, uint32_t) { return 60; });
  const auto blocks = blocksOf(frame, {10, 20, 60, 35}, 110);
  // Green: the mean of 40/90 and 0.
  EXPECT_FLOAT_EQ(blocks[0].colour[0], 0.5f);
  EXPECT_FLOAT_EQ(blocks[0].colour[1], 2 / 9.0f);
  EXPECT_FLOAT_EQ(blocks[0].colour[2], 1 / 3.0f);
}

TEST(Blocks, OfMonoFramesAreSinglePixels) {
  const Frame frame(3, 1, 8, VISTREL_MONO, [](uint32_t x, uint32_t) { return 100 * x; });
  const auto blocks = blocksOf(frame, {}, 200);
  ASSERT_EQ(blocks.size(), 2u);
  EXPECT_THAT(blocks[1].colour, ElementsAre(1, 1, 1));
}

TEST(Blocks, LieWithinTheRegion) {
  const Frame frame(6, 6, 8, VISTREL_RGGB, [](uint32_t x, uint32_t y) { return 10 * y + x; });
  const auto blocks = blocksOf(frame, {}, 100, {1, 1, 4, 4});
  ASSERT_EQ(blocks.size(), 1u);  // from (2, 2), not (4, 4), which is cut
  EXPECT_FLOAT_EQ(blocks[0].colour[0], 0.22f);
}

TEST(Blocks, AreNoMoreThanNeeded) {
  const Frame frame(2000, 1000, 8, VISTREL_RGGB, [](uint32_t, uint32_t) { return 1; });
  const size_t count = blocksOf(frame, {}, 255).size();  // of 500,000
  EXPECT_LE(count, kMaxBlocks);
  EXPECT_GE(count, kMaxBlocks / 4);
}

TEST(BalancedSamples, AreThoseOfBlocksBelowWhite) {
  const Frame frame(6, 6, 8, VISTREL_RGGB, [](uint32_t x, uint32_t y) { return 10 * y + x; });
  EXPECT_EQ(balancedSamples(frame, 0, {}), 36u);
  EXPECT_EQ(balancedSamples(frame, 0, {1, 1, 3, 2}), 6u);
  EXPECT_EQ(balancedSamples(frame, 31, {}), 12u);  // rows 0 and 1: rows 2 and 3 have 31 and more
  EXPECT_EQ(balancedSamples(frame, 100, {1, 1, 4, 4}), 4u);
}

TEST(Blocks, ThinMosaicsHaveNone) {
  const Frame frame(5, 1, 8, VISTREL_RGGB, [](uint32_t, uint32_t) { return 1; });
  EXPECT_TRUE(blocksOf(frame, {}, 255).empty());
}

}  // namespace
}  // namespace vistrel::app
