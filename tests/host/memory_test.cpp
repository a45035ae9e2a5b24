// Buffers: too short, too narrow, shared, misaligned, with gaps between their rows.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

struct Memory : ::testing::Test {
  std::vector<uint8_t> samples = std::vector<uint8_t>(6 * 4, 9);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(6 * 4, 77);
  vistrel_frame frame = frameOf(samples.data(), 6, 4, VISTREL_MONO);
  vistrel_conversion conversion = defaultConversion(frame);
  vistrel_image image{pixels.data(), pixels.size(), 0};

  void expect(int32_t status, const char* text) {
    vistrel_error error{};
    EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, &error), status);
    EXPECT_EQ(error.status, status);
    EXPECT_STREQ(error.text, text);
    EXPECT_THAT(pixels, Each(status == VISTREL_OK ? 9 : 77));
  }
};

TEST_F(Memory, IsEnough) { expect(VISTREL_OK, ""); }

TEST_F(Memory, NullPointers) {
  frame.samples = nullptr;
  expect(VISTREL_NULL_POINTER, "frame->samples is null");
  frame.samples = samples.data();
  image.pixels = nullptr;
  expect(VISTREL_NULL_POINTER, "image->pixels is null");
  vistrel_error error{};
  EXPECT_EQ(vistrel_convert(&frame, &conversion, nullptr, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "image is null");
}

TEST_F(Memory, FrameEndsEarly) {
  frame.size = 23;
  expect(VISTREL_SHORT_BUFFER, "frame->size 23: 4 rows of stride 6 take 24 bytes");
  frame.size = 24;
  frame.stride = 7;  // the last row has no gap after it
  expect(VISTREL_SHORT_BUFFER, "frame->size 24: 4 rows of stride 7 take 27 bytes");
}

TEST_F(Memory, ImageEndsEarly) {
  image.size = 23;
  expect(VISTREL_SHORT_BUFFER, "image->size 23: 4 rows of stride 6 take 24 bytes");
  image.size = 24;
  image.stride = 7;
  expect(VISTREL_SHORT_BUFFER, "image->size 24: 4 rows of stride 7 take 27 bytes");
}

TEST_F(Memory, ImageStrideIsTooShortOrTooLong) {
  image.stride = 5;
  expect(VISTREL_BAD_STRIDE, "image->stride 5: a row has 6 bytes");
  image.stride = SIZE_MAX / 4;
  EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_BAD_STRIDE);
}

TEST_F(Memory, FrameAndImageOverlap) {
  image.pixels = samples.data() + 23;
  image.size = 1000;
  expect(VISTREL_OVERLAP, "image->pixels: it overlaps the frame's samples");
  EXPECT_THAT(samples, Each(9));
}

TEST(Strides, GapsAreSkippedAndLeftAlone) {
  const auto samples = samplesOf<uint8_t>(5, 3, [](uint32_t x, uint32_t y) {
    return x < 3 ? 10 * y + x : 200;  // columns 3 and 4 are the gap
  });
  vistrel_frame frame = frameOf(samples.data(), 3, 3, VISTREL_MONO);
  frame.stride = 5;
  frame.size = samples.size();
  std::vector<uint8_t> pixels(4 * 3, 77);
  const vistrel_conversion conversion = defaultConversion(frame);
  const vistrel_image image{pixels.data(), pixels.size() - 1, 4};
  ASSERT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
  EXPECT_THAT(pixels, ElementsAre(0, 1, 2, 77, 10, 11, 12, 77, 20, 21, 22, 77));
}

// Words at odd addresses with an odd stride, and a result at an odd address.
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
      bytes.data() + 1, bytes.size() - 1, kStride, kWidth, kHeight, 2, 12, VISTREL_MONO, 0, {}};
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.format = VISTREL_MONO16;
  std::vector<uint8_t> pixels(1 + 2 * kWidth * kHeight);
  const vistrel_image image{pixels.data() + 1, pixels.size() - 1, 0};
  ASSERT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
  std::vector<uint16_t> words(kWidth * kHeight);
  std::memcpy(words.data(), pixels.data() + 1, 2 * words.size());
  EXPECT_EQ(words, samplesOf<uint16_t>(kWidth, kHeight, sample));
}

}  // namespace
}  // namespace vistrel
