// Black level and white balance, by hand and against the formula of the header.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;
using Gains = std::array<uint32_t, 3>;

// In real numbers, where a half is exact: samples and gains have 16 bits each.
uint32_t expected(uint32_t sample, uint32_t black, uint32_t gain, uint32_t bits) {
  const double v = sample > black ? sample - black : 0;
  return static_cast<uint32_t>(std::min(std::floor(v * gain / 4096 + 0.5), std::exp2(bits) - 1));
}

uint32_t gainAt(uint32_t phase, uint32_t x, uint32_t y, const Gains& gains) {
  return gains[std::string("rgb").find(vistrel_phase_name(phase)[2 * (y & 1) + (x & 1)])];
}

TEST(Black, IsTakenFromEverySample) {
  const std::vector<uint8_t> samples{0, 15, 16, 17, 200, 255};
  const vistrel_frame frame = frameOf(samples, 6, 1, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  setBlack(c, 16);
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(0, 0, 0, 1, 184, 239));
  setBlack(c, 255);
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(0, 0, 0, 0, 0, 0));
}

// Fourteen high bits: 0x1003 >> 2 is 1024 and so on. Bits are dropped last.
TEST(Black, CountsInUnitsOfTheSample) {
  const std::vector<uint16_t> samples{0x1003, 0x0FFC, 0xFFFC, 0x4000};
  vistrel_frame frame = frameOf(samples, 4, 1, 14, VISTREL_MONO);
  frame.alignment = VISTREL_HIGH_BITS;
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  c.excess = VISTREL_MASK;
  setBlack(c, 1023);
  EXPECT_THAT(samples16Of(convert(frame, c)), ElementsAre(1, 0, 15360, 3073));
  c.truncate_to = 10;
  EXPECT_THAT(samples16Of(convert(frame, c)), ElementsAre(0, 0, 960, 192));
}

// A plain colour: blue 100, green 70, red 41, less 10 black, times 1.5, 2 and 1.25.
TEST(Balance, GainsAreRoundedHalfUp) {
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const auto samples = samplesOf<uint8_t>(11, 9, plainColour(phase, 100, 70, 41));
    const vistrel_frame frame = frameOf(samples, 11, 9, phase);
    vistrel_conversion c = defaultConversion(frame);
    setBlack(c, 10);
    c.white_balance = VISTREL_BALANCE_GAINS;
    c.gains[0] = 5120, c.gains[1] = 8192, c.gains[2] = 6144;
    // Red 31 * 1.25 = 38.75; green 60 * 2; blue 90 * 1.5.
    EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(135, 120, 39));
    c.gains[0] = 2048, c.gains[1] = 65536, c.gains[2] = 1;
    // Red 15.5; green 960, clamped; blue 90 / 4096.
    EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(0, 255, 16));
  }
}

// The prepared frame, made in the test, converted without preparation.
TEST(Balance, IsTheFormulaInEveryPhaseAndRegion) {
  const Gains gains{7001, 4096, 9999};
  constexpr uint32_t kBlack[] = {33, 5, 61, 0};
  for (const uint32_t bits : {8u, 12u, 16u})
    for (uint32_t phase = 0; phase < 4; ++phase) {
      const auto samples = samplesOf<uint16_t>(17, 15, [bits](auto x, auto y) {
        return (x * 7919 + y * 104729 + x * y * 31) % (1u << bits);
      });
      const auto prepared = samplesOf<uint16_t>(17, 15, [&](auto x, auto y) {
        return expected(samples[17 * y + x], kBlack[2 * (y % 2) + x % 2],
                        gainAt(phase, x, y, gains), bits);
      });
      const vistrel_frame frame = frameOf(samples, 17, 15, bits, phase);
      const vistrel_frame wanted = frameOf(prepared, 17, 15, bits, phase);
      for (uint32_t origin = 0; origin < 4; ++origin) {
        const vistrel_region region{origin % 2 + 2, origin / 2, 12, 13};
        vistrel_conversion c = defaultConversion(frame);
        c.format = VISTREL_BGR48;
        c.region = region;
        c.edges = phase % 2 ? VISTREL_EDGES_PADDED : VISTREL_EDGES_NATIVE;
        const auto pixels = convert(wanted, c).pixels;
        std::copy(std::begin(kBlack), std::end(kBlack), c.black);
        c.white_balance = VISTREL_BALANCE_GAINS;
        std::copy(gains.begin(), gains.end(), c.gains);
        ASSERT_EQ(convert(frame, c).pixels, pixels) << bits << " bits, phase " << phase;
      }
    }
}

TEST(Balance, GainsOfOneChangeNothing) {
  const auto samples = samplesOf<uint16_t>(256, 256, [](auto x, auto y) { return 256 * y + x; });
  const vistrel_frame frame = frameOf(samples, 256, 256, 16, VISTREL_BGGR);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_BGR48;
  const auto pixels = convert(frame, c).pixels;
  c.white_balance = VISTREL_BALANCE_GAINS;
  c.gains[0] = c.gains[1] = c.gains[2] = VISTREL_GAIN_ONE;
  EXPECT_EQ(convert(frame, c).pixels, pixels);
}

// Red 3 of 3 samples and 0 of 1, over black: mean 9/4 = 576/256. Green 1: 256. Blue 7: 1792.
// Gains (4096 * 1792 + 288) / 576 = 12743.6, (4096 * 1792 + 128) / 256 = 28672.5, 4096.
TEST(Black, OfEachPlaceIsSubtractedFromMonoFramesToo) {
  const std::vector<uint8_t> samples(12, 50);
  const vistrel_frame frame = frameOf(samples, 4, 3, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.black[0] = 1, c.black[1] = 2, c.black[2] = 3, c.black[3] = 60;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(49, 48, 49, 48, 47, 0, 47, 0, 49, 48, 49, 48));
  c.region = {1, 1, 2, 2};
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(0, 47, 48, 49));
}

// Green 1, 4 and 4: mean 3. The mean of its rows' means would be 2.5.
// Bits that are not significant, where the conversion masks them, and all other fields.
// Only the region counts: its rows and columns may begin anywhere.
// A block with one clipped sample does not count at all.
}  // namespace
}  // namespace vistrel
