// Formats that the library does not write: its colours in another order, and luma.
#include <gmock/gmock.h>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

struct Formats : ::testing::Test {
  std::vector<uint16_t> samples = samplesOf<uint16_t>(
      19, 13, [](auto x, auto y) { return (x * 211 + y * 397 + (x ^ y) * 41) % 4096; });
  vistrel_frame frame = frameOf(samples, 19, 13, 12, VISTREL_GBRG);
  vistrel_conversion conversion = defaultConversion(frame);

  Image as(uint32_t format) {
    conversion.format = format;
    return convert(frame, conversion);
  }
  // Each pixel's samples in the given order of blue, green, red; 3 stands for alpha.
  template <class Samples>
  static Samples reordered(const Samples& bgr, const std::vector<size_t>& order) {
    Samples result;
    for (size_t i = 0; i < bgr.size(); i += 3)
      for (const size_t channel : order) result.push_back(channel == 3 ? 255 : bgr[i + channel]);
    return result;
  }
};

TEST_F(Formats, AreTheColoursInTheirOrder) {
  for (const uint32_t binning : {1u, 2u, 3u}) {
    conversion.binning = binning;
    const auto bgr = as(VISTREL_BGR24).pixels;
    EXPECT_EQ(as(VISTREL_RGB24).pixels, reordered(bgr, {2, 1, 0}));
    EXPECT_EQ(as(VISTREL_BGRA32).pixels, reordered(bgr, {0, 1, 2, 3}));
    EXPECT_EQ(as(VISTREL_RGBA32).pixels, reordered(bgr, {2, 1, 0, 3}));
    EXPECT_EQ(as(VISTREL_ARGB32).pixels, reordered(bgr, {3, 2, 1, 0}));
    EXPECT_EQ(samples16Of(as(VISTREL_RGB48)), reordered(samples16Of(as(VISTREL_BGR48)), {2, 1, 0}));
  }
}

TEST_F(Formats, HaveTheirLayout) {
  struct Case {
    uint32_t format, channels, bits, rowBytes;
  };
  for (const Case& c : {Case{VISTREL_RGB24, 3, 8, 57}, Case{VISTREL_BGRA32, 4, 8, 76},
                        Case{VISTREL_RGBA32, 4, 8, 76}, Case{VISTREL_RGB48, 3, 12, 114}}) {
    const vistrel_layout l = as(c.format).layout;
    EXPECT_EQ(l.channels, c.channels);
    EXPECT_EQ(l.bits, c.bits);
    EXPECT_EQ(l.row_bytes, c.rowBytes);
    EXPECT_EQ(l.bytes, c.rowBytes * 13);
  }
}

// Several algorithms go beyond the samples of their neighbourhood.
TEST_F(Formats, KeepTheirSignificantBits) {
  for (const uint32_t bits : {8u, 9u, 10u}) {
    const uint32_t fullScale = (1u << bits) - 1;
    const auto extremes = samplesOf<uint16_t>(40, 30, [=](auto x, auto y) {
      return (x * 7 + y * 5 + (x * y ^ x) * 3) % 4 < 2 ? fullScale : fullScale / 3;
    });
    const vistrel_frame mosaic = frameOf(extremes, 40, 30, bits, VISTREL_RGGB);
    for (size_t i = 0; const vistrel_algorithm* algorithm = vistrel_algorithm_at(i); ++i)
      for (const uint32_t format : {VISTREL_BGR48, VISTREL_RGB48_PLANAR, VISTREL_GRAY16}) {
        conversion = defaultConversion(mosaic);
        conversion.algorithm = algorithm->code;
        conversion.format = format;
        const auto made = samples16Of(convert(mosaic, conversion));
        EXPECT_LE(*std::max_element(made.begin(), made.end()), fullScale)
            << algorithm->name << ", " << bits << " bits, format " << format;
      }
  }
}

// At an odd address, with gaps that stay unchanged.
TEST_F(Formats, GoWhereTheStrideSays) {
  for (const uint32_t format :
       {VISTREL_RGB24, VISTREL_BGRA32, VISTREL_RGB48, VISTREL_GRAY16, VISTREL_RGB48_PLANAR})
    for (const uint32_t binning : {1u, 2u}) {
      conversion.binning = binning;
      const Image packed = as(format);
      const size_t row = packed.layout.row_bytes, stride = row + 5;
      const size_t rows = packed.pixels.size() / row;
      std::vector<uint8_t> memory(1 + stride * rows, 77), expected = memory;
      for (size_t y = 0; y < rows; ++y)
        std::copy_n(&packed.pixels[y * row], row, &expected[1 + y * stride]);
      const vistrel_image image{memory.data() + 1, memory.size() - 1, ptrdiff_t(stride), {}};
      ASSERT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
      EXPECT_EQ(memory, expected) << format << ", binning " << binning;
    }
}

// The same rows in the opposite order, from the highest in memory down.
TEST_F(Formats, LieBottomUpWithANegativeStride) {
  for (const uint32_t format : {VISTREL_BGR24, VISTREL_BGRA32, VISTREL_RGB48, VISTREL_GRAY8})
    for (const size_t padding : {0, 5}) {
      const Image packed = as(format);
      const size_t row = packed.layout.row_bytes, stride = row + padding;
      const size_t rows = packed.layout.height;
      std::vector<uint8_t> memory(stride * (rows - 1) + row, 77), expected = memory;
      for (size_t y = 0; y < rows; ++y)
        std::copy_n(&packed.pixels[y * row], row, &expected[(rows - 1 - y) * stride]);
      const auto last = memory.data() + (rows - 1) * stride;
      const vistrel_image image{last, memory.size(), -ptrdiff_t(stride), {}};
      ASSERT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
      EXPECT_EQ(memory, expected) << format;
      std::fill(memory.begin(), memory.end(), uint8_t{77});
      convertInto(frame, conversion, memory, -ptrdiff_t(stride));
      EXPECT_EQ(memory, expected) << format;
    }
}

TEST_F(Formats, Of16BitsNeed16BitSamples) {
  const std::vector<uint8_t> bytes(8 * 8);
  frame = frameOf(bytes, 8, 8, VISTREL_RGGB);
  conversion.format = VISTREL_RGB48;
  EXPECT_EQ(rejectionOf(frame, conversion).status, VISTREL_BAD_FORMAT);
}

TEST(Gray, IsLumaOfTheColours) {
  const auto samples = samplesOf<uint16_t>(9, 7, plainColour(VISTREL_GRBG, 301, 702, 1000));
  const vistrel_frame frame = frameOf(samples, 9, 7, 10, VISTREL_GRBG);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_GRAY16;
  // 0.114 * 301 + 0.587 * 702 + 0.299 * 1000 = 745.388
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(745));
  EXPECT_EQ(layoutOf(frame, c).channels, 1u);
  EXPECT_EQ(layoutOf(frame, c).bits, 10u);
  c.format = VISTREL_GRAY8;  // of 75, 175 and 250: 186.025
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(186));
  c.binning = 2;  // of 150, 255 and 255
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(243));
}

// Raw gray loses one, for instance at 128.
TEST(Gray, KeepsEqualChannelsUnlessRaw) {
  for (const uint32_t v : {0u, 1u, 100u, 128u, 254u, 255u}) {
    const std::vector<uint8_t> samples(6 * 6, static_cast<uint8_t>(v));
    const vistrel_frame frame = frameOf(samples, 6, 6, VISTREL_BGGR);
    vistrel_conversion c = defaultConversion(frame);
    c.format = VISTREL_GRAY8;
    EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(v));
    c.gray = VISTREL_RAW_GRAY;
    const bool loses = v == 1 || v == 128 || v == 254;
    EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(v - loses));
  }
}

}  // namespace
}  // namespace vistrel
