// The samples that the library gets: any stride and alignment, excess bits, high bits, truncation.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

TEST(Strides, GapsAreSkippedAndLeftAlone) {
  const auto samples = samplesOf<uint8_t>(5, 3, [](uint32_t x, uint32_t y) {
    return x < 3 ? 10 * y + x : 200;  // columns 3 and 4 are the gap
  });
  vistrel_frame frame = frameOf(samples, 3, 3, VISTREL_MONO);
  frame.stride = 5;
  frame.size = samples.size();
  std::vector<uint8_t> pixels(4 * 3, 77);
  const vistrel_conversion conversion = defaultConversion(frame);
  const vistrel_image image{pixels.data(), pixels.size() - 1, 4, {}};
  ASSERT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
  EXPECT_THAT(pixels, ElementsAre(0, 1, 2, 77, 10, 11, 12, 77, 20, 21, 22, 77));
}

// 16-bit samples at odd addresses with an odd stride, and a result at an odd address.
TEST(Strides, AnyAlignmentWillDo) {
  constexpr uint32_t kWidth = 7, kHeight = 5;
  constexpr size_t kStride = 2 * kWidth + 3;
  const auto sample = [](uint32_t x, uint32_t y) { return 300 * y + x; };
  std::vector<uint8_t> bytes(1 + kStride * kHeight);
  for (uint32_t y = 0; y < kHeight; ++y) {
    const auto row =
        samplesOf<uint16_t>(kWidth, 1, [&](uint32_t x, uint32_t) { return sample(x, y); });
    std::memcpy(&bytes[1 + y * kStride], row.data(), 2 * kWidth);
  }
  const vistrel_frame frame{
      bytes.data() + 1, bytes.size() - 1, kStride, kWidth, kHeight, 2, 12, VISTREL_MONO, 0, 0, {}};
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.format = VISTREL_MONO16;
  std::vector<uint8_t> pixels(1 + 2 * kWidth * kHeight);
  const vistrel_image image{pixels.data() + 1, pixels.size() - 1, 0, {}};
  ASSERT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
  std::vector<uint16_t> unpacked(kWidth * kHeight);
  std::memcpy(unpacked.data(), pixels.data() + 1, 2 * unpacked.size());
  EXPECT_EQ(unpacked, samplesOf<uint16_t>(kWidth, kHeight, sample));
}

// Of a conversion into enough memory.
vistrel_error conversionError(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  std::vector<uint8_t> pixels(layoutOf(frame, conversion).bytes);
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_error error{};
  vistrel_convert(&frame, &conversion, &image, &error);
  return error;
}

TEST(Excess, IsRejectedByDefaultWithItsPlace) {
  auto samples = samplesOf<uint16_t>(6, 5, [](uint32_t, uint32_t) { return 1023; });
  samples[6 * 3 + 2] = 1024;
  samples[6 * 4 + 0] = 0xFFFF;
  const vistrel_frame frame = frameOf(samples, 6, 5, 10, VISTREL_GRBG);
  expectError(conversionError(frame, defaultConversion(frame)),
              {VISTREL_EXCESS_SAMPLE, "frame.samples", "1024 at column 2, row 3",
               "samples of 10 bits are at most 1023"});
}

TEST(Excess, OutsideTheRegionDoesNotMatter) {
  auto samples = samplesOf<uint16_t>(6, 5, [](uint32_t, uint32_t) { return 400; });
  samples[0] = samples[5] = samples[6 * 4 + 1] = 0xFFFF;
  const vistrel_frame frame = frameOf(samples, 6, 5, 10, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  const vistrel_region region{1, 0, 4, 4};
  c.region = region;
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(100));
}

TEST(Excess, IsMaskedOnDemand) {
  const auto samples =
      samplesOf<uint16_t>(4, 3, [](uint32_t x, uint32_t y) { return 0xA800 | (100 * y + x); });
  const vistrel_frame frame = frameOf(samples, 4, 3, 11, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  c.excess = VISTREL_MASK;
  EXPECT_EQ(samples16Of(convert(frame, c)),
            samplesOf<uint16_t>(4, 3, [](uint32_t x, uint32_t y) { return 100 * y + x; }));
  EXPECT_EQ(samples[0], 0xA800) << "the caller's frame is not to be changed";
}

// The same samples in the high bits give the same image.
TEST(Alignment, OfHighBitsIsUndone) {
  const auto low =
      samplesOf<uint16_t>(12, 9, [](auto x, auto y) { return (x * 97 + y * 311) % 1024; });
  for (const uint32_t phase : {uint32_t{VISTREL_GBRG}, uint32_t{VISTREL_MONO}})
    for (const uint32_t bits : {10u, 12u, 16u}) {
      auto high = low;
      for (uint16_t& s : high) s = static_cast<uint16_t>(s << (16 - bits));
      vistrel_frame frame = frameOf(low, 12, 9, bits, phase);
      vistrel_conversion c = defaultConversion(frame);
      c.format = phase == VISTREL_MONO ? VISTREL_MONO16 : VISTREL_BGR48;
      for (const uint32_t reduced : {0u, 9u}) {
        c.truncate_to = reduced;
        const Image expected = convert(frame, c);
        vistrel_frame aligned = frameOf(high, 12, 9, bits, phase);
        aligned.alignment = VISTREL_HIGH_BITS;
        EXPECT_EQ(convert(aligned, c).pixels, expected.pixels) << bits << " bits";
      }
    }
}

TEST(Alignment, OfHighBitsHasZerosBelow) {
  std::vector<uint16_t> samples(4 * 3, 0x1230);
  samples[6] = 0x1238;
  vistrel_frame frame = frameOf(samples, 4, 3, 12, VISTREL_MONO);
  frame.alignment = VISTREL_HIGH_BITS;
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  expectError(conversionError(frame, c),
              {VISTREL_EXCESS_SAMPLE, "frame.samples", "4664 at column 2, row 1",
               "the lowest 4 of 16 bits are 0 in samples of 12 high bits"});
  c.excess = VISTREL_MASK;
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(0x123));
}

TEST(Truncation, DropsTheLowestBitsFirst) {
  const auto samples =
      samplesOf<uint16_t>(12, 10, [](uint32_t x, uint32_t y) { return 300 * y + 41 * x; });
  auto tenBits = samples;
  for (auto& s : tenBits) s = static_cast<uint16_t>(s >> 2);
  const vistrel_frame frame = frameOf(samples, 12, 10, 12, VISTREL_RGGB);
  const vistrel_frame reduced = frameOf(tenBits, 12, 10, 10, VISTREL_RGGB);
  for (const uint32_t format : {VISTREL_BGR24, VISTREL_BGR48}) {
    vistrel_conversion c = defaultConversion(frame);
    c.algorithm = VISTREL_LAROCHE;
    c.format = format;
    const Image expected = convert(reduced, c);
    c.truncate_to = 10;
    EXPECT_EQ(convert(frame, c).pixels, expected.pixels);
    EXPECT_EQ(convert(frame, c).layout.bits, expected.layout.bits);
    EXPECT_EQ(convert(reduced, c).pixels, expected.pixels);
  }
}

TEST(Truncation, LooksForExcessBitsBefore) {
  const std::vector<uint16_t> samples{0x1ABC, 0x0ABC, 0x0, 0x3};
  const vistrel_frame frame = frameOf(samples, 4, 1, 12, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  c.truncate_to = 9;
  EXPECT_THROW(convert(frame, c), Error);
  c.excess = VISTREL_MASK;
  EXPECT_THAT(samples16Of(convert(frame, c)), ElementsAre(0x157, 0x157, 0, 0));
}

}  // namespace
}  // namespace vistrel
