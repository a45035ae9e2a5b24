// Formats of several planes, against BGR24 and BGR48 whose samples the test moves.
#include <gmock/gmock.h>

#include "tests/host/frames.h"
#include "tests/host/guarded.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using Bytes = std::vector<uint8_t>;

uint32_t texture(uint32_t x, uint32_t y) { return (x * x * 7 + y * 131 + (x ^ y) * 59) % 1024; }

// Pixels of an image.
struct Pixels {
  size_t width, height, sampleBytes;
  Bytes bytes;

  const uint8_t* sample(size_t x, size_t y, size_t channel) const {
    return &bytes[((y * width + x) * 3 + channel) * sampleBytes];
  }
};

// Memory of rows; what nobody writes keeps the canary's value.
struct Rows {
  Bytes bytes;
  size_t stride;

  Rows(size_t rows, size_t bytesARow)
      : bytes(rows * bytesARow, Guarded::kCanary), stride(bytesARow) {}
  uint8_t& at(size_t x, size_t y) { return bytes[y * stride + x]; }
};

Bytes joined(const std::vector<Rows>& planes) {
  Bytes all;
  for (const Rows& plane : planes) all.insert(all.end(), plane.bytes.begin(), plane.bytes.end());
  return all;
}

Bytes planarOf(const Pixels& bgr, size_t stride) {
  std::vector<Rows> planes(3, Rows(bgr.height, stride));
  for (size_t y = 0; y < bgr.height; ++y)
    for (size_t x = 0; x < bgr.width; ++x)
      for (size_t c = 0; c < 3; ++c)
        std::memcpy(&planes[c].at(x * bgr.sampleBytes, y), bgr.sample(x, y, 2 - c),
                    bgr.sampleBytes);
  return joined(planes);
}

int product(int v, int w) { return (v * w + 16384) >> 15; }

struct Chroma {
  uint8_t cb, cr;
};

Chroma chromaOf(const Pixels& bgr, size_t column, size_t row) {
  int sums[3] = {};
  for (size_t i = 0; i < 4; ++i)
    for (size_t c = 0; c < 3; ++c)
      sums[c] += 32 * *bgr.sample(std::min(2 * column + i % 2, bgr.width - 1),
                                  std::min(2 * row + i / 2, bgr.height - 1), c);
  const int b = sums[0] - sums[1], r = sums[2] - sums[1];
  return {static_cast<uint8_t>((16448 + product(b, 14392) + product(r, -3298)) >> 7),
          static_cast<uint8_t>((16448 + product(r, 14392) + product(b, -1320)) >> 7)};
}

Bytes ycc420Of(const Pixels& bgr, size_t stride, bool inPairs) {
  const size_t columns = (bgr.width + 1) / 2, rows = (bgr.height + 1) / 2;
  Rows luma(bgr.height, stride);
  for (size_t y = 0; y < bgr.height; ++y)
    for (size_t x = 0; x < bgr.width; ++x) {
      const int weighted =
          15 * *bgr.sample(x, y, 0) + 148 * *bgr.sample(x, y, 1) + 44 * *bgr.sample(x, y, 2) + 3966;
      luma.at(x, y) = static_cast<uint8_t>(17 * weighted >> 12);
      if (inPairs && x + 1 == bgr.width && bgr.width % 2) luma.at(x + 1, y) = luma.at(x, y);
    }
  Rows pairs(rows, stride), cb(rows, (stride + 1) / 2), cr(rows, (stride + 1) / 2);
  for (size_t y = 0; y < rows; ++y)
    for (size_t x = 0; x < columns; ++x) {
      const Chroma chroma = chromaOf(bgr, x, y);
      (inPairs ? pairs.at(2 * x, y) : cb.at(x, y)) = chroma.cb;
      (inPairs ? pairs.at(2 * x + 1, y) : cr.at(x, y)) = chroma.cr;
    }
  return inPairs ? joined({luma, pairs}) : joined({luma, cb, cr});
}

Bytes expectedOf(const Pixels& bgr, uint32_t format, size_t stride) {
  if (format == VISTREL_RGB24_PLANAR || format == VISTREL_RGB48_PLANAR)
    return planarOf(bgr, stride);
  return ycc420Of(bgr, stride, format == VISTREL_NV12);
}

struct Planes : ::testing::TestWithParam<uint32_t> {
  const uint32_t format = GetParam();
  Guarded memory{size_t{1} << 24};

  void expectMoved(const vistrel_frame& frame, vistrel_conversion c, size_t padding) {
    c.format = format == VISTREL_RGB48_PLANAR ? VISTREL_BGR48 : VISTREL_BGR24;
    Image source = convert(frame, c);
    const size_t sampleBytes = format == VISTREL_RGB48_PLANAR ? 2 : 1;
    const Pixels bgr{source.layout.width, source.layout.height, sampleBytes,
                     Bytes(source.pixels.begin(), source.pixels.end())};
    c.format = format;
    const vistrel_layout layout = layoutOf(frame, c);
    ASSERT_EQ(layout.row_bytes,
              bgr.width * sampleBytes + (format == VISTREL_NV12 ? bgr.width % 2 : 0));
    const size_t stride = layout.row_bytes + padding;
    Bytes expected = expectedOf(bgr, format, stride);
    if (!padding) {
      ASSERT_EQ(layout.bytes, expected.size());
    }
    // The last row has no padding.
    const bool halves = format == VISTREL_I420;
    expected.resize(expected.size() - (halves ? (stride + 1) / 2 - (bgr.width + 1) / 2 : padding));
    uint8_t* const pixels = memory.place(expected.size());
    const vistrel_image image{
        pixels, expected.size(), padding ? static_cast<ptrdiff_t>(stride) : 0, {}};
    ASSERT_EQ(vistrel_convert(&frame, &c, &image, nullptr), VISTREL_OK);
    ASSERT_TRUE(Bytes(pixels, pixels + expected.size()) == expected)
        << bgr.width << 'x' << bgr.height << " padding " << padding;
    const vistrel_image shorter{pixels, expected.size() - 1, image.stride, {}};
    ASSERT_EQ(vistrel_convert(&frame, &c, &shorter, nullptr), VISTREL_SHORT_BUFFER);
  }
};
INSTANTIATE_TEST_SUITE_P(Every, Planes,
                         ::testing::Values(VISTREL_RGB24_PLANAR, VISTREL_RGB48_PLANAR, VISTREL_NV12,
                                           VISTREL_I420));

vistrel_conversion bilinear() {
  vistrel_conversion c{};
  c.binning = 1;
  return c;
}

TEST_P(Planes, HaveTheSamplesOfPackedPixels) {
  for (size_t level = 0; vistrel_level_name(level); ++level) {
    ASSERT_EQ(vistrel_set_level(level, nullptr), VISTREL_OK);
    for (const uint32_t width : {2, 3, 16, 31, 257, 300, 521})
      for (const uint32_t height : {2, 3, 8, 9}) {
        const auto samples = samplesOf<uint16_t>(width, height, texture);
        const vistrel_frame frame = frameOf(samples, width, height, 10, VISTREL_RGGB);
        expectMoved(frame, bilinear(), 0);
        expectMoved(frame, bilinear(), 1);
        expectMoved(frame, bilinear(), 64);
      }
  }
}

TEST_P(Planes, GoWithBinningReductionEdgesAndAlgorithms) {
  const auto samples = samplesOf<uint16_t>(91, 67, texture);
  const vistrel_frame frame = frameOf(samples, 91, 67, 10, VISTREL_GBRG);
  for (const uint32_t algorithm : {VISTREL_NEAR, VISTREL_HAMILTON, VISTREL_AHD})
    for (uint32_t binning = 1; binning <= 4; ++binning)
      for (const uint32_t edges : {VISTREL_EDGES_NATIVE, VISTREL_EDGES_PADDED}) {
        vistrel_conversion c = bilinear();
        c.algorithm = algorithm, c.binning = binning, c.edges = edges;
        if (format != VISTREL_RGB48_PLANAR) c.reduction = VISTREL_CURVE_3;
        expectMoved(frame, c, 2);
      }
}

TEST_P(Planes, GoPastTheCachesToo) {
  const auto samples = samplesOf<uint16_t>(1501, 1003, texture);
  const vistrel_frame frame = frameOf(samples, 1501, 1003, 10, VISTREL_BGGR);
  vistrel_conversion c = bilinear();
  c.destination = VISTREL_READ_LATER;
  expectMoved(frame, c, 0);
  expectMoved(frame, c, 37);
}

TEST_P(Planes, CountAsMemoryThatMustNotOverlap) {
  const auto samples = samplesOf<uint16_t>(8, 6, texture);
  const vistrel_frame frame = frameOf(samples, 8, 6, 10, VISTREL_BGGR);
  vistrel_conversion c = bilinear();
  c.format = format;
  const size_t bytes = layoutOf(frame, c).bytes;
  Bytes both(bytes + frame.size + 1);
  vistrel_frame behind = frame;
  behind.samples = &both[bytes];
  const vistrel_image image{both.data(), bytes, 0, {}}, later{&both[1], bytes, 0, {}};
  EXPECT_EQ(vistrel_convert(&behind, &c, &image, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_convert(&behind, &c, &later, nullptr), VISTREL_OVERLAP);
}

}  // namespace
}  // namespace vistrel
