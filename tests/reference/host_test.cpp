#include "tests/reference/host.h"

#include <gmock/gmock.h>

namespace reference {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Bytes = std::vector<uint8_t>;

vistrel_frame frameOf(const Bytes& bytes, uint32_t width, uint32_t height, uint32_t bits,
                      uint32_t phase, uint32_t packing = 0) {
  vistrel_frame f{};
  f.samples = bytes.data(), f.size = bytes.size();
  f.width = width, f.height = height;
  f.bytes_per_sample = bits == 8 && !packing ? 1 : 2, f.bits = bits;
  f.phase = phase, f.packing = packing;
  return f;
}

vistrel_conversion conversionTo(uint32_t format) {
  vistrel_conversion c{};
  c.format = format;
  c.binning = 1;
  return c;
}

std::vector<uint32_t> storedSamples(const vistrel_frame& frame) {
  std::vector<uint32_t> samples;
  for (size_t i = 0; i < frame.width; ++i) samples.push_back(hostStoredSample(frame, i, 0));
  return samples;
}

struct Packed {
  uint32_t packing, bits;
  Bytes bytes;
  std::vector<uint32_t> samples;
};

TEST(HostSamples, AreUnpacked) {
  const Packed cases[] = {
      {VISTREL_PACKING_LITTLE, 12, {0x34, 0x12, 0xCD, 0xAB}, {0x1234, 0xABCD}},
      {VISTREL_PACKING_BIG, 12, {0x34, 0x12, 0xCD, 0xAB}, {0x3412, 0xCDAB}},
      {VISTREL_PACKING_PFNC, 12, {0x23, 0x61, 0x45, 0x89, 0x07}, {0x123, 0x456, 0x789}},
      {VISTREL_PACKING_PFNC,
       10,
       {0xFF, 0x03, 0x10, 0x00, 0x80, 0x01, 0x00},
       {0x3FF, 0, 1, 0x200, 1}},
      {VISTREL_PACKING_GIGE, 12, {0x12, 0x63, 0x45, 0x78, 0x09}, {0x123, 0x456, 0x789}},
      {VISTREL_PACKING_GIGE, 10, {0x80, 0x21, 0x40, 0xFF, 0x03}, {0x201, 0x102, 0x3FF}},
      {VISTREL_PACKING_MIPI, 12, {0x12, 0x45, 0x63, 0x78, 0x09}, {0x123, 0x456, 0x789}},
      {VISTREL_PACKING_MIPI,
       10,
       {0x80, 0x40, 0xFF, 0x00, 0xB9, 0x01, 0x03},
       {0x201, 0x102, 0x3FF, 2, 7}},
      {VISTREL_PACKING_MIPI, 14, {0x01, 0x02, 0x41, 0x00}, {0x41, 0x81}}};
  for (const Packed& c : cases) {
    const auto width = static_cast<uint32_t>(c.samples.size());
    const vistrel_frame frame = frameOf(c.bytes, width, 1, c.bits, VISTREL_MONO, c.packing);
    EXPECT_EQ(hostRowBytes(frame), c.bytes.size()) << c.packing << ", " << c.bits;
    EXPECT_THAT(storedSamples(frame), ElementsAreArray(c.samples)) << c.packing << ", " << c.bits;
  }
}

TEST(HostSamples, AreAlignedMaskedAndTruncated) {
  const Bytes bytes = {0xFF, 0xFF, 0x47, 0x12};
  vistrel_frame frame = frameOf(bytes, 2, 1, 12, VISTREL_MONO, VISTREL_PACKING_LITTLE);
  vistrel_conversion c = conversionTo(VISTREL_MONO16);
  EXPECT_THAT(hostSamples(frame, c).values, ElementsAre(0xFFF, 0x247));
  EXPECT_TRUE(hasExcessBits(frame, 0x1247));
  EXPECT_FALSE(hasExcessBits(frame, 0x247));
  frame.alignment = VISTREL_HIGH_BITS;
  c.truncate_to = 8;
  EXPECT_THAT(hostSamples(frame, c).values, ElementsAre(0xFF, 0x12));
  EXPECT_TRUE(hasExcessBits(frame, 0x1247));
  EXPECT_FALSE(hasExcessBits(frame, 0x1240));
}

// Gains of 1.5 for red, 1 for green, 2 for blue.
TEST(HostSamples, LoseTheirBlackLevelAndAreBalanced) {
  const Bytes bytes = {100, 100, 200, 100, 100, 9};
  const vistrel_frame frame = frameOf(bytes, 3, 2, 8, VISTREL_RGGB);
  vistrel_conversion c = conversionTo(VISTREL_BGR24);
  c.black[0] = 1, c.black[1] = 20, c.black[2] = 30, c.black[3] = 40;
  c.white_balance = VISTREL_BALANCE_GAINS;
  c.gains[0] = 6144, c.gains[1] = 4096, c.gains[2] = 8192;
  // (99 * 6144 + 2048) >> 12 is 149 for 148.5; 199 * 1.5 and 60 * 2.
  EXPECT_THAT(hostSamples(frame, c).values, ElementsAre(149, 80, 255, 70, 120, 0));
}

// Red 16, green 8 and 24, blue 64: gains 4, 4 and 1.
TEST(HostSamples, AreBalancedByTheGrayWorld) {
  const Bytes bytes = {16, 8, 24, 64};
  const vistrel_frame frame = frameOf(bytes, 2, 2, 8, VISTREL_RGGB);
  vistrel_conversion c = conversionTo(VISTREL_BGR24);
  c.white_balance = VISTREL_BALANCE_GRAY_WORLD;
  EXPECT_THAT(hostSamples(frame, c).values, ElementsAre(64, 32, 96, 64));
  c.black[3] = 64;  // blue has the mean 0, red and green the largest
  EXPECT_THAT(hostSamples(frame, c).values, ElementsAre(16, 8, 24, 0));
}

TEST(HostArea, IsPaddedByWholeBinsOfTheMirroredFrame) {
  EXPECT_EQ(HostArea::mirrored(-1, 5), 1);
  EXPECT_EQ(HostArea::mirrored(5, 5), 3);
  EXPECT_EQ(HostArea::mirrored(-8, 2), 0);
  const Bytes bytes(200);
  const vistrel_frame frame = frameOf(bytes, 20, 10, 8, VISTREL_RGGB);
  vistrel_conversion c = conversionTo(VISTREL_BGR24);
  c.binning = 3, c.edges = VISTREL_EDGES_PADDED, c.region = {1, 2, 19, 8};
  const HostArea area = hostArea(frame, c);
  EXPECT_EQ(area.x, -8);
  EXPECT_EQ(area.y, -7);
  EXPECT_EQ(area.resultWidth, 6u);
  EXPECT_EQ(area.resultHeight, 2u);
  EXPECT_EQ(area.width, 36u);
  EXPECT_EQ(area.height, 24u);
  EXPECT_EQ(area.pad, 3u);
}

Bytes stored(uint32_t format, size_t bytes, uint32_t width, ptrdiff_t stride,
             const std::vector<uint16_t>& samples) {
  Bytes image(bytes, 77);
  const auto height = static_cast<uint32_t>(samples.size() / 3 / width);
  hostStore({width, height, 3, samples}, format, image.data(), stride);
  return image;
}

TEST(HostFormats, HaveTheirOrder) {
  const std::vector<uint16_t> pixel = {10, 20, 30};  // blue, green, red
  EXPECT_THAT(stored(VISTREL_BGR24, 3, 1, 3, pixel), ElementsAre(10, 20, 30));
  EXPECT_THAT(stored(VISTREL_RGB24, 3, 1, 3, pixel), ElementsAre(30, 20, 10));
  EXPECT_THAT(stored(VISTREL_ARGB32, 4, 1, 4, pixel), ElementsAre(255, 30, 20, 10));
  EXPECT_THAT(stored(VISTREL_ARGB32_4, 4, 1, 4, pixel), ElementsAre(255, 30, 20, 10));
  EXPECT_THAT(stored(VISTREL_BGRA32, 4, 1, 4, pixel), ElementsAre(10, 20, 30, 255));
  EXPECT_THAT(stored(VISTREL_RGBA32, 4, 1, 4, pixel), ElementsAre(30, 20, 10, 255));
  // 1.14 + 11.74 + 8.97 = 21.85
  EXPECT_THAT(stored(VISTREL_GRAY8, 1, 1, 1, pixel), ElementsAre(22));
}

TEST(HostFormats, HavePlanesAndStrides) {
  const std::vector<uint16_t> pixels = {1, 2, 3, 4, 5, 6};  // one above the other
  Bytes image(5, 77);
  hostStore({1, 2, 3, pixels}, VISTREL_BGR24, image.data(), 0);
  EXPECT_THAT(stored(VISTREL_RGB24_PLANAR, 12, 1, 2, pixels),
              ElementsAre(3, 77, 6, 77, 2, 77, 5, 77, 1, 77, 4, 77));
  Bytes upward(7, 77);
  hostStore({1, 2, 3, pixels}, VISTREL_BGR24, upward.data() + 4, -4);
  EXPECT_THAT(upward, ElementsAre(4, 5, 6, 77, 1, 2, 3));
}

// White has the luma 235 and the chroma 128; blue (0, 0, 255) by the formulas of the header:
// Y = 17 * (15 * 255 + 3966) >> 12 = 32. b - g is 32 * 4 * 255 = 32640, whose products are 14335.8
// and -1314.8, rounded: Cb = (16448 + 14336) >> 7 = 240, Cr = (16448 - 1315) >> 7 = 118.
TEST(HostFormats, HaveLumaAndChroma) {
  const std::vector<uint16_t> white(3, 255), blue = {255, 0, 0};
  EXPECT_THAT(stored(VISTREL_NV12, 4, 1, 2, white), ElementsAre(235, 235, 128, 128));
  EXPECT_THAT(stored(VISTREL_NV12, 4, 1, 2, blue), ElementsAre(32, 32, 240, 118));
  EXPECT_THAT(stored(VISTREL_I420, 6, 1, 3, blue), ElementsAre(32, 77, 77, 240, 77, 118));
  EXPECT_THAT(stored(VISTREL_I444, 3, 1, 1, blue), ElementsAre(32, 240, 118));
}

// Black beside blue: the block's mean is half as blue. 32 * 2 * 255 = 16320 has the products 7167.9
// and -657.4: Cb = (16448 + 7168) >> 7 = 184, Cr = (16448 - 657) >> 7 = 123.
TEST(HostFormats, ShareChromaOrHaveTheirOwn) {
  const std::vector<uint16_t> pixels = {0, 0, 0, 255, 0, 0};
  Bytes shared(4), own(6);
  hostStore({2, 1, 3, pixels}, VISTREL_I420, shared.data(), 2);
  hostStore({2, 1, 3, pixels}, VISTREL_I444, own.data(), 2);
  EXPECT_THAT(shared, ElementsAre(16, 32, 184, 123));
  EXPECT_THAT(own, ElementsAre(16, 32, 128, 240, 128, 118));
}

TEST(HostConversion, LeavesTheImageOfExcessSamplesUntouched) {
  const Bytes bytes = {1, 0, 0, 16};
  const vistrel_frame frame = frameOf(bytes, 2, 1, 12, VISTREL_MONO, VISTREL_PACKING_LITTLE);
  vistrel_conversion c = conversionTo(VISTREL_MONO16);
  uint16_t pixels[2] = {7, 7};
  const vistrel_image image{pixels, sizeof pixels, 0, {}};
  EXPECT_EQ(hostConvert(frame, c, image), VISTREL_EXCESS_SAMPLE);
  EXPECT_THAT(pixels, ElementsAre(7, 7));
  c.region = {0, 0, 1, 1};
  EXPECT_EQ(hostConvert(frame, c, image), VISTREL_OK);
  EXPECT_THAT(pixels, ElementsAre(1, 7));
}

// A plain mosaic, whatever the phase; with binning of 2 twice as bright.
TEST(HostConversion, KeepsAPlainColour) {
  const Bytes bytes = {40, 30, 40, 30, 40, 30, 20, 40, 20, 40, 20, 40,
                       40, 30, 40, 30, 40, 30, 20, 40, 20, 40, 20, 40};
  const vistrel_frame frame = frameOf(bytes, 6, 4, 8, VISTREL_GRBG);
  vistrel_conversion c = conversionTo(VISTREL_BGR24);
  c.edges = VISTREL_EDGES_PADDED;
  c.region = {1, 1, 5, 3};
  for (uint32_t binning = 1; binning <= 2; ++binning) {
    c.binning = binning;
    Bytes image(hostArea(frame, c).resultWidth * hostArea(frame, c).resultHeight * size_t{3});
    EXPECT_EQ(hostConvert(frame, c, {image.data(), image.size(), 0, {}}), VISTREL_OK);
    for (size_t i = 0; i < image.size(); ++i)
      EXPECT_EQ(image[i], (20 + 20 * (i % 3 == 1) + 10 * (i % 3 == 2)) * binning);
  }
}

}  // namespace
}  // namespace reference
