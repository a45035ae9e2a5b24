// Formats of several planes, against BGR24 and BGR48 whose samples the reference moves.
#include <gmock/gmock.h>

#include "tests/host/frames.h"
#include "tests/host/guarded.h"
#include "tests/host/rejection.h"
#include "tests/reference/host.h"

namespace vistrel {
namespace {

using Bytes = std::vector<uint8_t>;

uint32_t texture(uint32_t x, uint32_t y) { return (x * x * 7 + y * 131 + (x ^ y) * 59) % 1024; }

// The planes of an image of blue, green and red samples, between the canary's bytes.
Bytes planesOf(const Image& bgr, size_t sampleBytes, uint32_t format, size_t stride) {
  const auto samples = sampleBytes == 2
                           ? samples16Of(bgr)
                           : std::vector<uint16_t>(bgr.pixels.begin(), bgr.pixels.end());
  const auto last =
      reference::hostPlanes(format, bgr.layout.width, bgr.layout.height, stride).back();
  Bytes bytes(last.offset + (last.rows - 1) * last.stride + last.rowBytes, Guarded::kCanary);
  reference::hostStore({bgr.layout.width, bgr.layout.height, 3, samples}, format, bytes.data(),
                       static_cast<ptrdiff_t>(stride));
  return bytes;
}

struct Planes : ::testing::TestWithParam<uint32_t> {
  const uint32_t format = GetParam();
  Guarded memory{size_t{1} << 24};

  void expectMoved(const vistrel_frame& frame, vistrel_conversion c, size_t padding) {
    c.format = format == VISTREL_RGB48_PLANAR ? VISTREL_BGR48 : VISTREL_BGR24;
    const Image bgr = convert(frame, c);
    const size_t sampleBytes = format == VISTREL_RGB48_PLANAR ? 2 : 1, width = bgr.layout.width;
    c.format = format;
    const vistrel_layout layout = layoutOf(frame, c);
    ASSERT_EQ(layout.row_bytes, width * sampleBytes + (format == VISTREL_NV12 ? width % 2 : 0));
    const size_t stride = layout.row_bytes + padding;
    const Bytes expected = planesOf(bgr, sampleBytes, format, stride);
    if (!padding) {
      ASSERT_EQ(layout.bytes, expected.size());
    }
    uint8_t* const pixels = memory.place(expected.size());
    const vistrel_image image{
        pixels, expected.size(), padding ? static_cast<ptrdiff_t>(stride) : 0, {}};
    ASSERT_EQ(vistrel_convert(&frame, &c, &image, nullptr), VISTREL_OK);
    ASSERT_TRUE(Bytes(pixels, pixels + expected.size()) == expected)
        << width << 'x' << bgr.layout.height << " padding " << padding;
    const vistrel_image shorter{pixels, expected.size() - 1, image.stride, {}};
    ASSERT_EQ(vistrel_convert(&frame, &c, &shorter, nullptr), VISTREL_SHORT_BUFFER);
  }
};
INSTANTIATE_TEST_SUITE_P(Every, Planes,
                         ::testing::Values(VISTREL_RGB24_PLANAR, VISTREL_RGB48_PLANAR, VISTREL_NV12,
                                           VISTREL_I420, VISTREL_I444));

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
