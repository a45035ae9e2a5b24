// Gray-world gains, by hand.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

Gains measured(const vistrel_frame& frame, const vistrel_conversion& c) {
  Gains gains{};
  vistrel_error error{};
  EXPECT_EQ(vistrel_measure_gains(&frame, &c, gains.data(), &error), VISTREL_OK) << error.text;
  return gains;
}

TEST(GrayWorld, MakesPlainColoursEqual) {
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const auto samples = samplesOf<uint16_t>(9, 7, plainColour(phase, 310, 610, 210));
    const vistrel_frame frame = frameOf(samples, 9, 7, 12, phase);
    vistrel_conversion c = defaultConversion(frame);
    setBlack(c, 10);
    // Means 200, 600, 300.
    EXPECT_THAT(measured(frame, c), ElementsAre(3 * 4096, 4096, 2 * 4096));
    c.format = VISTREL_BGR48;
    c.white_balance = VISTREL_BALANCE_GRAY_WORLD;
    EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(600, 600, 600));
  }
}

TEST(GrayWorld, RoundsAsDocumented) {
  std::vector<uint8_t> samples{5, 3, 5, 3, 3, 9, 3, 9, 5, 3, 2, 3, 3, 9, 3, 9};
  const vistrel_frame frame = frameOf(samples, 4, 4, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  setBlack(c, 2);
  EXPECT_THAT(measured(frame, c), ElementsAre(12743, 28672, 4096));
  setBlack(c, 3);  // green has nothing left
  EXPECT_THAT(measured(frame, c), ElementsAre(16384, 65536, 4096));
  setBlack(c, 9);
  EXPECT_THAT(measured(frame, c), ElementsAre(4096, 4096, 4096));
}

TEST(GrayWorld, SubtractsTheBlackOfEachPlace) {
  const std::vector<uint8_t> samples(16, 50);
  const vistrel_frame frame = frameOf(samples, 4, 4, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  c.black[0] = 10, c.black[1] = 30, c.black[2] = 30, c.black[3] = 42;
  EXPECT_THAT(measured(frame, c), ElementsAre(4096, 8192, 20480));
}

TEST(GrayWorld, MeasuresTheWholeFrame) {
  const auto samples =
      samplesOf<uint16_t>(23, 19, [](auto x, auto y) { return (x * 131 + y * 37 + x * y) % 1024; });
  const vistrel_frame frame = frameOf(samples, 23, 19, 10, VISTREL_GRBG);
  vistrel_conversion c = defaultConversion(frame);
  const Gains gains = measured(frame, c);
  const vistrel_region region{3, 5, 11, 8};
  c.region = region;
  c.white_balance = VISTREL_BALANCE_GRAY_WORLD;
  const auto pixels = convert(frame, c).pixels;
  c.white_balance = VISTREL_BALANCE_GAINS;
  std::copy(gains.begin(), gains.end(), c.gains);
  EXPECT_EQ(convert(frame, c).pixels, pixels);
}

TEST(GrayWorld, TakesTheGreenOfBothKindsOfRowsTogether) {
  const std::vector<uint8_t> samples{12, 1, 12, 4, 12, 4};
  const vistrel_frame frame = frameOf(samples, 3, 2, VISTREL_RGGB);
  EXPECT_THAT(measured(frame, defaultConversion(frame)), ElementsAre(4096, 16384, 4096));
}

TEST(GrayWorld, GivesAColourWithoutSamplesTheLargestGain) {
  const std::vector<uint8_t> samples{20, 10, 20};
  const vistrel_frame frame = frameOf(samples, 1, 3, VISTREL_RGGB);
  EXPECT_THAT(measured(frame, defaultConversion(frame)), ElementsAre(4096, 8192, 65536));
}

TEST(GrayWorld, ReadsOfTheConversionOnlyWhatSaysWhichSamplesCount) {
  std::vector<uint16_t> samples{(300 << 4) + 15, 600 << 4, (600 << 4) + 7, 150 << 4};
  vistrel_frame frame = frameOf(samples, 2, 2, 12, VISTREL_RGGB);
  frame.alignment = VISTREL_HIGH_BITS;
  vistrel_conversion c{};
  std::memset(&c, 0xFF, sizeof c);
  setBlack(c, 0);
  c.white = 0;
  c.region = {};
  c.excess = VISTREL_MASK;
  EXPECT_THAT(measured(frame, c), ElementsAre(8192, 4096, 16384));
}

TEST(GrayWorld, RejectsExcessAnywhere) {
  std::vector<uint16_t> samples(6 * 6, 100);
  samples[35] = 1024;
  const vistrel_frame frame = frameOf(samples, 6, 6, 10, VISTREL_GRBG);
  vistrel_conversion c = defaultConversion(frame);
  Gains gains{};
  vistrel_error error{};
  EXPECT_EQ(vistrel_measure_gains(&frame, &c, gains.data(), &error), VISTREL_EXCESS_SAMPLE);
  expectError(error, {VISTREL_EXCESS_SAMPLE, "frame.samples", "1024 at column 5, row 5",
                      "samples of 10 bits are at most 1023"});
  c.excess = VISTREL_MASK;
  EXPECT_EQ(vistrel_measure_gains(&frame, &c, gains.data(), &error), VISTREL_OK);
}

TEST(GrayWorld, RejectsWhatItCannotMeasure) {
  const std::vector<uint8_t> samples(6 * 6);
  vistrel_frame frame = frameOf(samples, 6, 6, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  Gains gains{};
  vistrel_error error{};
  const auto expect = [&](const Rejection& expected) {
    EXPECT_EQ(vistrel_measure_gains(&frame, &c, gains.data(), &error), expected.status);
    expectError(error, expected);
  };
  expect({VISTREL_BAD_PHASE, "frame.phase", "mono", "gains are measured on Bayer frames only"});
  frame.phase = VISTREL_RGGB;
  setBlack(c, 256);
  expect({VISTREL_BAD_BLACK, "conversion.black[0]", "256", "samples of 8 bits allow 0 to 255"});
  setBlack(c, 0);
  c.excess = 2;
  expect({VISTREL_BAD_EXCESS, "conversion.excess", "2", "0 (reject) and 1 (mask) are allowed"});
  c.excess = 0;
  frame.size = 35;
  expect({VISTREL_SHORT_BUFFER, "frame.size", "35", "6 rows of stride 6 take 36 bytes"});
  frame.stride = SIZE_MAX / 4;
  EXPECT_EQ(vistrel_measure_gains(&frame, &c, gains.data(), &error), VISTREL_TOO_LARGE);
  EXPECT_EQ(vistrel_measure_gains(&frame, &c, nullptr, &error), VISTREL_NULL_POINTER);
  EXPECT_EQ(vistrel_measure_gains(nullptr, &c, gains.data(), &error), VISTREL_NULL_POINTER);
  EXPECT_EQ(vistrel_measure_gains(&frame, nullptr, gains.data(), &error), VISTREL_NULL_POINTER);
}

TEST(MeasuredGains, AreThoseOfTheRegion) {
  const auto samples = samplesOf<uint8_t>(12, 9, [](uint32_t x, uint32_t y) {
    const bool isInside = x >= 3 && x < 9 && y >= 1 && y < 6;
    return isInside ? plainColour(VISTREL_RGGB, 25, 100, 50)(x, y) : 200;
  });
  const vistrel_frame frame = frameOf(samples, 12, 9, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  EXPECT_NE(measureGains(frame, c), (Gains{8192, 4096, 16384}));
  c.region = {3, 1, 6, 5};
  EXPECT_EQ(measureGains(frame, c), (Gains{8192, 4096, 16384}));
  c.region = {3, 1, 10, 5};
  EXPECT_EQ(tryMeasureGains(frame, c).error().status(), VISTREL_BAD_REGION);
}

TEST(MeasuredGains, LeaveOutBlocksThatClip) {
  auto samples = samplesOf<uint8_t>(8, 8, plainColour(VISTREL_RGGB, 25, 100, 50));
  samples[2 * 8 + 2] = 250;                           // red, with its block of greens and blue
  samples[5 * 8 + 4] = 251, samples[4 * 8 + 4] = 10;  // green, and the red of its block
  const vistrel_frame frame = frameOf(samples, 8, 8, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  EXPECT_NE(measureGains(frame, c), (Gains{8192, 4096, 16384}));
  c.white = 250;
  EXPECT_EQ(measureGains(frame, c), (Gains{8192, 4096, 16384}));
  c.white = 20;  // nothing is left
  EXPECT_EQ(measureGains(frame, c), (Gains{4096, 4096, 4096}));
}

}  // namespace
}  // namespace vistrel
