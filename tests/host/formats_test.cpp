// The formats beside the library's: its colours in another order.
#include <gmock/gmock.h>

#include <sstream>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

struct Formats : ::testing::Test {
  std::vector<uint16_t> samples = samplesOf<uint16_t>(
      19, 13, [](auto x, auto y) { return (x * 211 + y * 397 + (x ^ y) * 41) % 4096; });
  vistrel_frame frame = frameOf(samples.data(), 19, 13, 12, VISTREL_GBRG);
  vistrel_conversion conversion = defaultConversion(frame);

  Image as(uint32_t format) {
    conversion.format = format;
    return convert(frame, conversion);
  }
  // Each pixel's samples in the given order of blue, green, red; 3 stands for alpha.
  template <class T>
  static std::vector<T> reordered(const std::vector<T>& bgr, const std::vector<size_t>& order) {
    std::vector<T> result;
    for (size_t i = 0; i < bgr.size(); i += 3)
      for (const size_t channel : order) result.push_back(channel == 3 ? T{255} : bgr[i + channel]);
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
    EXPECT_EQ(wordsOf(as(VISTREL_RGB48)), reordered(wordsOf(as(VISTREL_BGR48)), {2, 1, 0}));
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

// At an odd address, with gaps that stay as they were.
TEST_F(Formats, GoWhereTheStrideSays) {
  for (const uint32_t format : {VISTREL_RGB24, VISTREL_BGRA32, VISTREL_RGB48}) {
    const Image packed = as(format);
    const size_t row = packed.layout.row_bytes, stride = row + 5;
    std::vector<uint8_t> memory(1 + stride * 13, 77), expected = memory;
    for (size_t y = 0; y < 13; ++y)
      std::copy_n(&packed.pixels[y * row], row, &expected[1 + y * stride]);
    const vistrel_image image{memory.data() + 1, memory.size() - 1, stride};
    ASSERT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
    EXPECT_EQ(memory, expected) << format;
  }
}

TEST_F(Formats, OfWordsNeedWords) {
  const std::vector<uint8_t> bytes(8 * 8);
  frame = frameOf(bytes.data(), 8, 8, VISTREL_RGGB);
  conversion.format = VISTREL_RGB48;
  EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_BAD_FORMAT);
}

TEST(FormatTable, IsStable) {
  std::vector<std::string> rows;
  for (size_t i = 0; const vistrel_format* f = vistrel_format_at(i); ++i) {
    std::ostringstream row;
    row << f->name << ' ' << f->code << ' ' << f->channels << 'x' << f->bytes_per_sample;
    rows.push_back(row.str() + (f->mono ? " mono" : ""));
  }
  EXPECT_THAT(rows,
              ElementsAre("MONO8 0 1x1 mono", "MONO16 1 1x2 mono", "BGR24 2 3x1", "ARGB32 3 4x1",
                          "ARGB32_4 4 4x1", "BGR48 7 3x2", "GRAY8 5 1x1", "GRAY16 6 1x2",
                          "RGB24 256 3x1", "BGRA32 257 4x1", "RGBA32 258 4x1", "RGB48 259 3x2"));
}

}  // namespace
}  // namespace vistrel
