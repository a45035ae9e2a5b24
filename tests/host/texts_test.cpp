// The words of rejections where a number or another argument decides them.
#include <gtest/gtest.h>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

struct Texts : ::testing::Test {
  std::vector<uint16_t> samples = std::vector<uint16_t>(20, 9);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(60);
  vistrel_frame frame = frameOf(samples, 20, 1, 10, VISTREL_MONO);
  vistrel_conversion conversion = defaultConversion(frame);
  vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_error error{};

  void expectOfConvert(const Rejection& expected) {
    vistrel_convert(&frame, &conversion, &image, &error);
    expectError(error, expected);
  }
};

TEST_F(Texts, CountOneRow) {
  frame.size = 39;
  expectOfConvert({VISTREL_SHORT_BUFFER, "frame.size", "39", "1 row of stride 40 takes 40 bytes"});
  frame.size = 40, frame.stride = SIZE_MAX;
  expectOfConvert(kAccepted);
  frame.size = 39;
  expectOfConvert({VISTREL_SHORT_BUFFER, "frame.size", "39",
                   "1 row of stride 18446744073709551615 takes 40 bytes"});
  frame.size = 40, frame.stride = 0, image.size = 19;
  expectOfConvert({VISTREL_SHORT_BUFFER, "image.size", "19", "1 row of stride 20 takes 20 bytes"});
}

TEST_F(Texts, CountOneSampleAndOneByte) {
  frame = frameOf(samples, 1, 2, 10, VISTREL_MONO);
  frame.stride = 1;
  expectOfConvert({VISTREL_BAD_STRIDE, "frame.stride", "1", "a row of 1 sample has 2 bytes"});
  frame.stride = 0;
  image.size = 0, image.stride = 1;
  expectOfConvert({VISTREL_SHORT_BUFFER, "image.size", "0", "2 rows of stride 1 take 2 bytes"});
  frame.height = 1;
  expectOfConvert({VISTREL_SHORT_BUFFER, "image.size", "0", "1 row of stride 1 takes 1 byte"});
}

// Its rows count as one, but not for its owner.
TEST_F(Texts, OfAContinuousFrameNameItsSize) {
  vistrel_packed packed = packedOf(pixels, 10, 8, VISTREL_PACKING_PFNC, 10);
  packed.continuous = 1;
  std::vector<uint16_t> unpacked(10 * 8);
  vistrel_unpack(&packed, unpacked.data(), 2 * unpacked.size(), &error);
  expectError(error, {VISTREL_SHORT_BUFFER, "packed.size", "60", "10x8 samples take 100 bytes"});
}

TEST_F(Texts, OfGainsNameTheFramesThatHaveThem) {
  uint32_t gains[3];
  frame.width = 6, frame.phase = VISTREL_BGR;
  vistrel_measure_gains(&frame, &conversion, gains, &error);
  expectError(error,
              {VISTREL_BAD_PHASE, "frame.phase", "bgr", "gains are measured on Bayer frames only"});
}

// From a runner, on its caller's thread.
TEST_F(Texts, OfABusyStreamNameNoThread) {
  std::vector<uint8_t> large(1000 * 700), result(large.size());
  frame = frameOf(large, 1000, 700, VISTREL_MONO);
  conversion = defaultConversion(frame);
  image = {result.data(), result.size(), 0, {}};
  Stream stream = Stream::acquire();
  const auto runner = [&](uint32_t count, auto task) {
    vistrel_stream_convert(stream.handle(), &frame, &conversion, &image, &error);
    while (count > 0) task(--count);
  };
  setRunner(conversion, 2, runner);
  EXPECT_TRUE(stream.tryConvert(frame, conversion));
  expectError(error, {VISTREL_BUSY_STREAM, "stream", "", "a conversion is running on it"});
}

TEST_F(Texts, OfPushedConversionsThatHaveEnded) {
  Stream stream = Stream::acquire();
  PushedConversion pushed = stream.begin(frame, conversion, pixels);
  EXPECT_TRUE(pushed.tryPush(samples, 1));
  PushedConversion none;
  for (PushedConversion* const ended : {&pushed, &none}) {
    const auto more = ended->tryPush(samples, 1);
    ASSERT_FALSE(more);
    EXPECT_EQ(more.error().status(), VISTREL_BAD_STREAM);
    EXPECT_STREQ(more.error().what(), "stream: this conversion has ended, or has not begun");
    EXPECT_STREQ(more.error().reason(), "this conversion has ended, or has not begun");
  }
}

}  // namespace
}  // namespace vistrel
