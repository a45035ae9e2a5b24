// Padded edges, against a frame that the test pads, converts with native edges and crops.
#include <gtest/gtest.h>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

constexpr uint32_t kPad = 36;  // a multiple of every binning, more than the layer's own

// Steps back and forth between 0 and n - 1, so that no mirror is computed.
uint32_t bounced(int64_t i, uint32_t n) {
  uint32_t at = 0;
  bool up = i > 0;
  for (int64_t steps = std::abs(i); steps > 0; --steps) {
    if (at == 0) up = true;
    if (at == n - 1) up = false;
    up ? ++at : --at;
  }
  return at;
}

std::vector<uint16_t> paddedBy(uint32_t pad, const std::vector<uint16_t>& samples, uint32_t width,
                               uint32_t height) {
  return samplesOf<uint16_t>(width + 2 * pad, height + 2 * pad, [&](uint32_t x, uint32_t y) {
    return samples[bounced(int64_t{y} - pad, height) * width + bounced(int64_t{x} - pad, width)];
  });
}

Bytes cropped(const Image& image, uint32_t x, uint32_t y, uint32_t width, uint32_t height) {
  const size_t pixel = image.layout.row_bytes / image.layout.width;
  Bytes result;
  for (uint32_t row = y; row < y + height; ++row) {
    const auto from =
        image.pixels.begin() + static_cast<ptrdiff_t>(row * image.layout.row_bytes + x * pixel);
    result.insert(result.end(), from, from + static_cast<ptrdiff_t>(width * pixel));
  }
  return result;
}

uint32_t edgeTexture(uint32_t x, uint32_t y) { return (x * x * 7 + y * 131 + (x ^ y) * 59) % 1024; }

struct Shape {
  uint32_t width, height;
  vistrel_region region;
};

void expectPadded(const Shape& s, uint32_t phase, vistrel_conversion c) {
  const auto samples = samplesOf<uint16_t>(s.width, s.height, edgeTexture);
  const auto padded = paddedBy(kPad, samples, s.width, s.height);
  const vistrel_frame frame = frameOf(samples, s.width, s.height, 10, phase);
  const vistrel_frame large = frameOf(padded, s.width + 2 * kPad, s.height + 2 * kPad, 10, phase);
  // From here to the large frame's border, so that its bins are those of the region.
  const vistrel_region from{s.region.x, s.region.y, large.width - s.region.x,
                            large.height - s.region.y};
  c.region = from;
  const uint32_t width = s.region.width / c.binning, height = s.region.height / c.binning;
  const auto expected =
      cropped(convert(large, c), kPad / c.binning, kPad / c.binning, width, height);
  c.region = s.region;
  c.edges = VISTREL_EDGES_PADDED;
  const Image image = convert(frame, c);
  ASSERT_EQ(image.layout.width, width);
  ASSERT_EQ(image.layout.height, height);
  EXPECT_EQ(image.pixels, expected)
      << "algorithm " << c.algorithm << ", format " << c.format << ", binning " << c.binning
      << ", phase " << phase << ", frame " << s.width << 'x' << s.height;
}

constexpr Shape kShapes[] = {
    {31, 27, {0, 0, 31, 27}}, {31, 27, {5, 3, 17, 13}}, {30, 24, {9, 10, 21, 14}},
    {2, 2, {0, 0, 2, 2}},     {3, 2, {1, 0, 2, 2}},     {5, 40, {0, 1, 4, 36}},
};

vistrel_conversion conversionBy(uint32_t algorithm, uint32_t format) {
  vistrel_conversion c{};
  c.algorithm = algorithm;
  c.format = format;
  c.binning = 1;
  return c;
}

TEST(PaddedEdges, AreThoseOfAPaddedFrameByEveryAlgorithm) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    for (const Shape& shape : kShapes)
      for (uint32_t phase = 0; phase < 4; ++phase)
        expectPadded(shape, phase, conversionBy(a->code, VISTREL_BGR48));
}

TEST(PaddedEdges, GoWithEveryFormatAndBinning) {
  for (const uint32_t format : {uint32_t{VISTREL_BGR24}, uint32_t{VISTREL_ARGB32},
                                uint32_t{VISTREL_GRAY16}, uint32_t{VISTREL_RGBA32}})
    for (uint32_t binning = 1; binning <= 4; ++binning)
      for (const Shape& shape : {kShapes[0], kShapes[1], kShapes[2]}) {
        vistrel_conversion c = conversionBy(VISTREL_LAROCHE, format);
        c.binning = binning;
        expectPadded(shape, VISTREL_GBRG, c);
      }
}

// No algorithm sees the border from ten pixels inside.
TEST(PaddedEdges, LeaveTheInteriorAsItIs) {
  const auto samples = samplesOf<uint16_t>(48, 44, edgeTexture);
  const vistrel_frame frame = frameOf(samples, 48, 44, 10, VISTREL_RGGB);
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    vistrel_conversion c = conversionBy(a->code, VISTREL_BGR24);
    const auto native = cropped(convert(frame, c), 10, 10, 28, 24);
    c.edges = VISTREL_EDGES_PADDED;
    EXPECT_EQ(cropped(convert(frame, c), 10, 10, 28, 24), native) << a->name;
  }
}

// A region of a padded image is the image's crop: beyond it lies the frame.
TEST(PaddedEdges, OfARegionAreTheFrame) {
  const auto samples = samplesOf<uint16_t>(40, 36, edgeTexture);
  const vistrel_frame frame = frameOf(samples, 40, 36, 10, VISTREL_BGGR);
  for (const uint32_t algorithm : {uint32_t{VISTREL_KIMMEL}, uint32_t{VISTREL_BILINEAR}}) {
    vistrel_conversion c = conversionBy(algorithm, VISTREL_BGR24);
    c.edges = VISTREL_EDGES_PADDED;
    const auto expected = cropped(convert(frame, c), 7, 1, 1, 3);
    const vistrel_region region{7, 1, 1, 3};  // less than a demosaic needs natively
    c.region = region;
    EXPECT_EQ(convert(frame, c).pixels, expected);
  }
}

TEST(PaddedEdges, AllowEveryRegionOfTheSmallestMosaicToEveryAlgorithm) {
  const auto samples = samplesOf<uint16_t>(2, 2, plainColour(VISTREL_GBRG, 300, 500, 700));
  const vistrel_frame frame = frameOf(samples, 2, 2, 10, VISTREL_GBRG);
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    for (uint32_t x = 0; x < 2; ++x)
      for (uint32_t y = 0; y < 2; ++y) {
        vistrel_conversion c = conversionBy(a->code, VISTREL_BGR48);
        c.edges = VISTREL_EDGES_PADDED;
        c.region = {x, y, 1, 1};
        EXPECT_EQ(plainPixel(convert(frame, c)), (std::vector<uint32_t>{300, 500, 700})) << a->name;
      }
}

TEST(PaddedEdges, KeepAPlainColourPlain) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    for (uint32_t phase = 0; phase < 4; ++phase) {
      const auto samples = samplesOf<uint16_t>(9, 7, plainColour(phase, 300, 500, 700));
      const vistrel_frame frame = frameOf(samples, 9, 7, 10, phase);
      vistrel_conversion c = conversionBy(a->code, VISTREL_BGR48);
      c.edges = VISTREL_EDGES_PADDED;
      EXPECT_EQ(plainPixel(convert(frame, c)), (std::vector<uint32_t>{300, 500, 700})) << a->name;
    }
}

TEST(PaddedEdges, DoNothingToMonoFrames) {
  const auto samples = samplesOf<uint16_t>(9, 1, edgeTexture);
  const vistrel_frame frame = frameOf(samples, 9, 1, 10, VISTREL_MONO);
  vistrel_conversion c = conversionBy(0, VISTREL_MONO16);
  c.edges = VISTREL_EDGES_PADDED;
  EXPECT_EQ(samples16Of(convert(frame, c)), samples);
}

// Gains follow the colours into the padding.
TEST(PaddedEdges, ArePreparedToo) {
  const auto samples = samplesOf<uint16_t>(12, 11, edgeTexture);
  const uint32_t gains[] = {8192, 4096, 6144};
  const auto prepared = samplesOf<uint16_t>(12, 11, [&](uint32_t x, uint32_t y) {
    const uint32_t gain =
        y % 2 == 0 ? (x % 2 ? gains[1] : gains[0]) : (x % 2 ? gains[2] : gains[1]);
    return std::min((samples[12 * y + x] * gain + 2048) >> 12, 1023u);
  });
  vistrel_conversion c = conversionBy(VISTREL_VNG, VISTREL_BGR48);
  c.edges = VISTREL_EDGES_PADDED;
  const auto expected = convert(frameOf(prepared, 12, 11, 10, VISTREL_RGGB), c).pixels;
  c.white_balance = VISTREL_BALANCE_GAINS;
  std::copy_n(gains, 3, c.gains);
  EXPECT_EQ(convert(frameOf(samples, 12, 11, 10, VISTREL_RGGB), c).pixels, expected);
}

// Dark frames of two levels are full of ties, which AHD decides by the pixel to the left.
TEST(PaddedEdges, MakeBandsOfFullWidthThatAreCropsOfAhd) {
  const auto samples = samplesOf<uint8_t>(
      64, 48, [](auto x, auto y) { return 16 + (x * x * 31 + y * y * 17 + x * y * 7) / 5 % 2; });
  const vistrel_frame frame = frameOf(samples, 64, 48, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  c.algorithm = VISTREL_AHD;
  c.edges = VISTREL_EDGES_PADDED;
  const Image whole = convert(frame, c);
  for (uint32_t y = 0; y < 40; ++y) {
    c.region = {0, y, 64, 8};
    EXPECT_EQ(convert(frame, c).pixels, cropped(whole, 0, y, 64, 8)) << y;
  }
}

}  // namespace
}  // namespace vistrel
