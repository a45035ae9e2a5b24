// Results that can be worked out by hand.
#include <gmock/gmock.h>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

TEST(Defaults, FitTheFrame) {
  const uint8_t sample[] = {0};
  EXPECT_EQ(defaultConversion(frameOf(sample, 1, 1, VISTREL_MONO)).format, VISTREL_MONO8);
  const vistrel_conversion c = defaultConversion(frameOf(sample, 1, 1, VISTREL_GBRG));
  EXPECT_EQ(c.format, VISTREL_BGR24);
  EXPECT_EQ(c.algorithm, VISTREL_BILINEAR);
  EXPECT_EQ(c.binning, 1u);
  EXPECT_EQ(c.reduction, VISTREL_WINDOW_HIGH);
  EXPECT_EQ(c.excess, VISTREL_REJECT);
  EXPECT_EQ(c.region.width, 0u);
}

TEST(Mono, RegionIsCutOutAndBinned) {
  const auto samples = samplesOf<uint8_t>(10, 8, [](uint32_t x, uint32_t y) { return 10 * y + x; });
  const vistrel_frame frame = frameOf(samples, 10, 8, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  const vistrel_region region{3, 1, 5, 4};
  c.region = region;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(13, 14, 15, 16, 17, 23, 24, 25, 26, 27, 33, 34,
                                                    35, 36, 37, 43, 44, 45, 46, 47));
  // The sum of four, halved: (13 + 14 + 23 + 24) / 2 and so on; the fifth column is no bin.
  c.binning = 2;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(37, 41, 77, 81));
}

TEST(Mono, SixteenBitsKeepTheSamples) {
  const auto samples =
      samplesOf<uint16_t>(9, 3, [](uint32_t x, uint32_t y) { return 7000 * y + x; });
  const vistrel_frame frame = frameOf(samples, 9, 3, 14, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  EXPECT_EQ(samples16Of(convert(frame, c)), samples);
}

TEST(Mono, WindowsKeepOtherBits) {
  const std::vector<uint16_t> samples{0x123, 0x3FF, 0x400, 0x7FF, 0x800, 0xFFF};
  const vistrel_frame frame = frameOf(samples, 6, 1, 12, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(0x12, 0x3F, 0x40, 0x7F, 0x80, 0xFF));
  c.reduction = VISTREL_WINDOW_MIDDLE;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(0x24, 0x7F, 0x80, 0xFF, 0xFF, 0xFF));
  c.reduction = VISTREL_WINDOW_LOW;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(0x48, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF));
}

// The top ten bits choose one of 1024 entries; the pieces of curves 2 to 5 are straight lines.
TEST(Mono, CurvesMapTheTopTenBits) {
  struct Case {
    uint32_t reduction;
    std::vector<uint16_t> tenBits;
    Bytes mapped;
  };
  const Case cases[] = {
      {VISTREL_CURVE_2, {64, 128, 767, 768, 1023}, {32, 64, 223, 224, 255}},
      {VISTREL_CURVE_3, {96, 192, 639, 640, 1023}, {48, 96, 207, 208, 255}},
      {VISTREL_CURVE_4, {32, 64, 128, 512, 1023}, {32, 64, 96, 192, 255}},
      {VISTREL_CURVE_5, {128, 256, 512, 768, 1023}, {16, 32, 96, 176, 255}},
      {VISTREL_CURVE_6,
       {0, 81, 204, 409, 512, 655, 768, 880, 972, 1023},
       {0, 10, 33, 102, 152, 215, 240, 250, 254, 255}},
  };
  for (const Case& k : cases) {
    for (const uint32_t bits : {10u, 12u, 16u}) {
      auto samples = k.tenBits;
      for (auto& s : samples) s = static_cast<uint16_t>(s << (bits - 10));
      const auto width = static_cast<uint32_t>(samples.size());
      const vistrel_frame frame = frameOf(samples, width, 1, bits, VISTREL_MONO);
      vistrel_conversion c = defaultConversion(frame);
      c.reduction = k.reduction;
      EXPECT_EQ(convert(frame, c).pixels, k.mapped) << bits << " bits, reduction " << k.reduction;
    }
  }
}

// Near neighbours look beyond the region, where the frame goes on: only what is in it counts.
TEST(Colour, NothingOutsideTheRegionMatters) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    auto samples = samplesOf<uint16_t>(
        31, 29, [](uint32_t x, uint32_t y) { return (x * x + 7 * y * y + 13 * x * y) % 1024; });
    const vistrel_region region{11, 5, 20, 24};
    vistrel_frame frame = frameOf(samples, 31, 29, 10, VISTREL_BGGR);
    vistrel_conversion c = defaultConversion(frame);
    c.algorithm = a->code;
    c.region = region;
    const auto pixels = convert(frame, c).pixels;
    for (uint32_t y = 0; y < 29; ++y)
      for (uint32_t x = 0; x < 31; ++x)
        if (x < 11 || y < 5) samples[31 * y + x] = 0xFFFF;
    EXPECT_EQ(convert(frame, c).pixels, pixels) << a->name;
  }
}

// A frame of one colour stays of one colour, at every phase and from every origin. In a bin of
// three by three, one green tap reads red and one red tap reads blue.
TEST(Colour, EveryPhaseOriginAndBinningKeepsAPlainColour) {
  const std::vector<uint32_t> expected[] = {{5, 10, 20}, {10, 20, 40}, {15, 33, 55}, {20, 40, 80}};
  for (const uint32_t algorithm :
       {uint32_t{VISTREL_BILINEAR}, uint32_t{VISTREL_NEAR}, uint32_t{VISTREL_AHD}}) {
    for (uint32_t phase = 0; phase < 4; ++phase) {
      const auto samples = samplesOf<uint8_t>(23, 21, plainColour(phase, 5, 10, 20));
      const vistrel_frame frame = frameOf(samples, 23, 21, phase);
      for (uint32_t binning = 1; binning <= 4; ++binning) {
        for (uint32_t origin = 0; origin < 16; ++origin) {
          const vistrel_region region{origin % 4, origin / 4, 19, 17};
          vistrel_conversion c = defaultConversion(frame);
          c.algorithm = algorithm;
          c.binning = binning;
          c.region = region;
          EXPECT_EQ(plainPixel(convert(frame, c)), expected[binning - 1])
              << "algorithm " << algorithm << ", phase " << phase << ", binning " << binning
              << ", origin " << origin;
        }
      }
    }
  }
}

std::vector<uint32_t> middlePixel(const Image& image) {
  const size_t channels = image.layout.channels;
  const bool wide = image.layout.row_bytes > image.layout.width * channels;
  const auto at = static_cast<ptrdiff_t>(
      channels * (image.layout.height / 2 * image.layout.width + image.layout.width / 2));
  if (!wide) return {image.pixels.begin() + at, image.pixels.begin() + at + ptrdiff_t(channels)};
  const auto samples = samples16Of(image);
  return {samples.begin() + at, samples.begin() + at + ptrdiff_t(channels)};
}

// The library's packed path would give black for half of these, and for all that are binned.
TEST(Colour, KimmelKeepsAPlainColourAtEveryPhaseWidthAndBinning) {
  const std::vector<uint32_t> expected[] = {{5, 10, 20}, {10, 20, 40}, {15, 33, 55}, {20, 40, 80}};
  for (uint32_t phase = 0; phase < 4; ++phase)
    for (uint32_t width : {24u, 25u}) {
      const auto bytes = samplesOf<uint8_t>(width, 21, plainColour(phase, 5, 10, 20));
      const auto wide = samplesOf<uint16_t>(width, 21, plainColour(phase, 5, 10, 20));
      vistrel_frame frame = frameOf(wide, width, 21, 10, phase);
      vistrel_conversion c = defaultConversion(frame);
      c.algorithm = VISTREL_KIMMEL;
      c.format = VISTREL_BGR48;
      EXPECT_EQ(middlePixel(convert(frame, c)), expected[0]) << phase << ", " << width;
      frame = frameOf(bytes, width, 21, phase);
      c.format = VISTREL_BGR24;
      for (c.binning = 1; c.binning <= 4; ++c.binning)
        EXPECT_EQ(middlePixel(convert(frame, c)), expected[c.binning - 1])
            << phase << ", " << width << ", binning " << c.binning;
    }
}

TEST(Colour, EveryFormatAndDepthHasItsOwnLayout) {
  const auto samples = samplesOf<uint16_t>(8, 6, plainColour(VISTREL_GBRG, 0x123, 0x456, 0xF89));
  const vistrel_frame frame = frameOf(samples, 8, 6, 12, VISTREL_GBRG);
  vistrel_conversion c = defaultConversion(frame);
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(0x12, 0x45, 0xF8));
  c.format = VISTREL_ARGB32;
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(0xFF, 0xF8, 0x45, 0x12));
  c.format = VISTREL_ARGB32_4;
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(0xFF, 0xF8, 0x45, 0x12));
  c.format = VISTREL_BGR48;
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(0x123, 0x456, 0xF89));
  c.format = VISTREL_BGR24;
  c.reduction = VISTREL_WINDOW_LOW;
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(0x48, 0xFF, 0xFF));
}

// The mean of a slope's neighbours is its middle, so all channels hold the sample itself.
TEST(Colour, RegionLiesWhereItShould) {
  const auto slope = [](uint32_t x, uint32_t y) { return 40 * x + 60 * y; };
  const auto samples = samplesOf<uint16_t>(31, 29, slope);
  const vistrel_frame frame = frameOf(samples, 31, 29, 12, VISTREL_BGGR);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_BGR48;
  for (uint32_t origin = 0; origin < 25; ++origin) {
    const vistrel_region region{origin % 5, origin / 5, 26, 24};
    c.region = region;
    const auto bgr = samples16Of(convert(frame, c));
    for (uint32_t y = 1; y < region.height - 1; ++y)
      for (uint32_t i = 3; i < 3 * (region.width - 1); ++i)
        ASSERT_EQ(bgr[3 * region.width * y + i], slope(region.x + i / 3, region.y + y))
            << "origin " << origin << ", row " << y << ", sample " << i;
  }
}

// Every algorithm takes its smallest frame, in every phase, and keeps a plain frame plain there
// as far as it has no dark or bright rim.
TEST(Colour, EveryAlgorithmTakesItsSmallestFrame) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    const uint32_t side = a->min_size;
    const std::vector<uint16_t> samples(side * side, 500);
    for (uint32_t phase = 0; phase < 4; ++phase) {
      const vistrel_frame frame = frameOf(samples, side, side, 10, phase);
      vistrel_conversion c = defaultConversion(frame);
      c.algorithm = a->code;
      EXPECT_EQ(convert(frame, c).layout.width, side) << a->name;
    }
  }
}

// Entry k of 1024, or entries 4k of 4096, for what the highest ten bits are k of.
TEST(Table, MapsTheHighestTenBits) {
  const std::vector<uint16_t> samples{0, 3, 4, 2000, 2003, 4095};
  const vistrel_frame frame = frameOf(samples, 6, 1, 12, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.reduction = VISTREL_TABLE;
  std::vector<uint16_t> table(1024, 7);
  table[0] = 255, table[1] = 9, table[500] = 100, table[1023] = 3;
  c.table = table.data();
  c.table_entries = 1024;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(255, 255, 9, 100, 100, 3));
  std::vector<uint16_t> longTable(4096, 7);
  longTable[0] = 1, longTable[4] = 2, longTable[2000] = 5, longTable[4092] = 4;
  c.table = longTable.data();
  c.table_entries = 4096;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(1, 1, 2, 5, 5, 4));
}

TEST(Table, IsOfThisCallAlone) {
  const std::vector<uint16_t> samples(8 * 8, 600), light(1024, 200), dark(1024, 20);
  const vistrel_frame frame = frameOf(samples, 8, 8, 10, VISTREL_GBRG);
  vistrel_conversion c = defaultConversion(frame);
  c.reduction = VISTREL_TABLE;
  c.table_entries = 1024;
  for (const auto* table : {&light, &dark, &light}) {
    c.table = table->data();
    EXPECT_THAT(plainPixel(convert(frame, c)),
                ElementsAre(table->at(0), table->at(0), table->at(0)));
  }
}

}  // namespace
}  // namespace vistrel
