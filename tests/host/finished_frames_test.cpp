// Frames of finished pixels, against the same conversion straight from the mosaic.
#include <gtest/gtest.h>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

uint32_t noiseAt(uint32_t x, uint32_t y) { return (x * x * 7 + y * 131 + (x ^ y) * 59) % 4096; }

constexpr uint32_t kWidth = 60, kHeight = 48;  // whole bins

// A frame of an image's pixels.
vistrel_frame frameOfPixels(const Image& image, size_t bytesPerSample, uint32_t bits) {
  return {image.pixels.data(),
          image.pixels.size(),
          0,
          image.layout.width,
          image.layout.height,
          static_cast<uint32_t>(bytesPerSample),
          bits,
          VISTREL_BGR,
          VISTREL_LOW_BITS,
          0,
          {}};
}

vistrel_conversion conversionTo(uint32_t format) {
  vistrel_conversion c{};
  c.format = format;
  c.binning = 1;
  return c;
}

template <class T>
struct Finished : ::testing::Test {
  static constexpr uint32_t kBits = sizeof(T) == 1 ? 8 : 12;
  std::vector<T> samples = samplesOf<T>(
      kWidth, kHeight, [](uint32_t x, uint32_t y) { return noiseAt(x, y) >> (12 - kBits); });
  vistrel_frame mosaic{
      samples.data(), samples.size() * sizeof(T), 0, kWidth, kHeight, sizeof(T), kBits,
      VISTREL_GBRG,   VISTREL_LOW_BITS,           0, {}};
  Image image = convert(mosaic, conversionTo(sizeof(T) == 1 ? VISTREL_BGR24 : VISTREL_BGR48));
  vistrel_frame pixels = frameOfPixels(image, sizeof(T), kBits);

  void expectSame(const vistrel_conversion& c) {
    const Image expected = convert(mosaic, c), result = convert(pixels, c);
    EXPECT_EQ(result.layout.width, expected.layout.width);
    EXPECT_TRUE(result.pixels == expected.pixels)
        << "format " << c.format << ", binning " << c.binning << ", reduction " << c.reduction;
  }
};
using Samples = ::testing::Types<uint8_t, uint16_t>;
TYPED_TEST_SUITE(Finished, Samples);

TYPED_TEST(Finished, PixelsBecomeWhatTheMosaicBecomes) {
  for (size_t i = 0; const vistrel_format* format = vistrel_format_at(i); ++i)
    for (uint32_t binning = 1; binning <= 4; ++binning)
      for (const uint32_t reduction : {VISTREL_WINDOW_HIGH, VISTREL_WINDOW_LOW, VISTREL_CURVE_4}) {
        const bool reduces = sizeof(TypeParam) == 2 && format->bytes_per_sample == 1;
        if (format->mono || format->bytes_per_sample > sizeof(TypeParam)) continue;
        if (reduction && !reduces) continue;
        vistrel_conversion c = conversionTo(format->code);
        c.binning = binning, c.reduction = reduction;
        this->expectSame(c);
      }
}

TYPED_TEST(Finished, PixelsHaveRegionsStridesAndAnyAlignment) {
  const size_t pixel = 3 * sizeof(TypeParam), row = kWidth * pixel, stride = row + 5;
  std::vector<uint8_t> bytes(1 + stride * kHeight);
  for (size_t y = 0; y < kHeight; ++y)
    std::memcpy(&bytes[1 + y * stride], &this->image.pixels[y * row], row);
  vistrel_conversion c = conversionTo(VISTREL_RGBA32);
  c.region = {5, 3, 30, 40};
  c.binning = 2;
  const Image expected = convert(this->pixels, c);
  this->pixels.samples = &bytes[1];
  this->pixels.size = bytes.size() - 1 - 5;
  this->pixels.stride = stride;
  EXPECT_EQ(convert(this->pixels, c).pixels, expected.pixels);
  --this->pixels.size;
  EXPECT_FALSE(tryConvert(this->pixels, c));
}

TEST(FinishedFrames, HaveABlackLevelForEachPlace) {
  const std::vector<uint8_t> samples(3 * 5 * 3, 100);
  const vistrel_frame frame{samples.data(), samples.size(), 0, 5, 3, 1, 8, VISTREL_BGR, 0, 0, {}};
  vistrel_conversion c = conversionTo(VISTREL_BGR24);
  c.black[0] = 1, c.black[1] = 20, c.black[2] = 3, c.black[3] = 40;
  c.region = {1, 0, 4, 3};
  std::vector<uint8_t> expected;
  for (const std::vector<int>& row :
       {std::vector{80, 99, 80, 99}, {60, 97, 60, 97}, {80, 99, 80, 99}})
    for (const int pixel : row) expected.insert(expected.end(), 3, static_cast<uint8_t>(pixel));
  EXPECT_EQ(convert(frame, c).pixels, Bytes(expected.begin(), expected.end()));
}

// Twelve bits, the highest of 16, of which ten stay; more samples than a vector or a block has.
TEST(FinishedFrames, HaveBlackLevelsWithEveryPreparation) {
  constexpr uint32_t kColumns = 131, kRows = 5, kBlack[] = {0, 4095, 700, 33};
  const auto samples = samplesOf<uint16_t>(3 * kColumns, kRows, [](uint32_t x, uint32_t y) {
    return noiseAt(x, y) << 4 | (x + y) % 16;
  });
  vistrel_frame frame = frameOf(samples, kColumns, kRows, 12, VISTREL_BGR);
  frame.alignment = VISTREL_HIGH_BITS;
  vistrel_conversion c = conversionTo(VISTREL_BGR48);
  c.excess = VISTREL_MASK, c.truncate_to = 10;
  std::copy_n(kBlack, 4, c.black);
  const Image image = convert(frame, c);
  for (uint32_t y = 0; y < kRows; ++y)
    for (uint32_t i = 0; i < 3 * kColumns; ++i) {
      const uint32_t black = kBlack[2 * (y % 2) + i / 3 % 2], sample = noiseAt(i, y);
      uint16_t pixel;
      std::memcpy(&pixel, &image.pixels[2 * (y * 3 * kColumns + i)], sizeof pixel);
      ASSERT_EQ(pixel, (std::max(sample, black) - black) >> 2) << i << ", " << y;
    }
}

TEST(FinishedFrames, ReportTheColumnOfAnExcessSample) {
  std::vector<uint16_t> samples(3 * 20, 100);
  samples[3 * 10 + 3 * 4 + 2] = 5000;
  const vistrel_frame frame{samples.data(), 120, 0, 10, 2, 2, 12, VISTREL_BGR, 0, 0, {}};
  const auto result = tryConvert(frame, conversionTo(VISTREL_RGB24));
  ASSERT_FALSE(result);
  EXPECT_STREQ(result.error().value(), "5000 at column 4, row 1");
}

vistrel_error finishedRejection(void (*change)(vistrel_frame&, vistrel_conversion&)) {
  vistrel_frame frame{nullptr, 0, 0, 10, 2, 1, 8, VISTREL_BGR, 0, 0, {}};
  vistrel_conversion c = defaultConversion(frame);
  change(frame, c);
  return rejectionOf(frame, c);
}

TEST(FinishedFrames, AreRejectedWithWhatOnlyMosaicsHave) {
  expectError(finishedRejection([](auto&, auto& c) { c.algorithm = 99; }), kAccepted);
  expectError(
      finishedRejection([](auto&, auto& c) { c.format = VISTREL_MONO8; }),
      {VISTREL_BAD_FORMAT, "conversion.format", "MONO8", "it is for mono frames; this one is bgr"});
  expectError(
      finishedRejection([](auto&, auto& c) { c.white_balance = 1; }),
      {VISTREL_BAD_BALANCE, "conversion.white_balance", "1", "a bgr frame has finished colours"});
  expectError(finishedRejection([](auto&, auto& c) { c.format = VISTREL_GRAY8, c.gray = 1; }),
              {VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
               "raw gray is for Bayer frames; this one is bgr"});
  expectError(finishedRejection([](auto& f, auto&) { f.stride = 29; }),
              {VISTREL_BAD_STRIDE, "frame.stride", "29", "a row of 30 samples has 30 bytes"});
}

}  // namespace
}  // namespace vistrel
