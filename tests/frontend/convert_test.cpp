// How format, selector and skip flag choose the path.
#include "tests/frontend/calls.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;

VISTREL_STREAM_SUITE(Convert);
VISTREL_STREAM_SUITE(Selector);
VISTREL_STREAM_SUITE(SkipDemosaic);

using Bytes = std::vector<uint8_t>;
using Samples16 = std::vector<uint16_t>;

const Bytes kBytes = noise<uint8_t>(64 * 64, 255, 1);
const Samples16 kSamples16 = noise<uint16_t>(64 * 64, 4095, 2);

template <class T>
void expectRejected(const Call& call, const std::vector<T>& frame) {
  Image canvas(16 * 8 * 6);
  EXPECT_EQ(convert(call, frame, canvas.data()), 0u);
  EXPECT_TRUE(canvas.untouched());
}

template <class T>
void expectNothingWritten(const Call& call, const std::vector<T>& frame) {
  Image canvas(16 * 8 * 6);
  EXPECT_EQ(convert(call, frame, canvas.data()), 1u);
  EXPECT_TRUE(canvas.untouched());
}

TEST_P(Selector, CodesAboveEightAreRejected) {
  for (uint32_t code : {9u, 10u, 127u, 200u, 255u, 0x0109u, 0xFFFFFF09u})
    for (uint32_t format : {2u, 3u, 4u, 5u, 7u, 8u, 255u}) {
      expectRejected({.format = format, .algorithm = code}, kBytes);
      expectRejected({.format = format, .algorithm = code}, kSamples16);
    }
  EXPECT_TRUE(bufferUntouched());
}

TEST_P(Selector, CodesAreComparedAfterTheCutToEightBits) {
  for (uint32_t code = 0; code < 12; ++code) {
    Image plain(16 * 8 * 3), threshold(16 * 8 * 3);
    const uint32_t done = convert({.algorithm = code}, kSamples16, plain.data());
    if (code == 1) continue;  // this one reads the threshold
    EXPECT_EQ(convert({.algorithm = 0xFFFF0100 | code}, kSamples16, threshold.data()), done)
        << code;
    EXPECT_EQ(plain.samples(), threshold.samples()) << code;
  }
}

TEST_P(Selector, BilinearNeverSeesTheThreshold) {
  const Bytes plain = converted({.algorithm = DM_BILINEAR}, kBytes);
  for (uint32_t selector : {0x7F00u, 0xFF00u, 0xFFFF0000u, 0x00010000u})
    EXPECT_EQ(converted({.algorithm = selector}, kBytes), plain);
}

TEST_P(Selector, IsNotLookedAtForMonoFormats) {
  const Call mono8{.format = 0}, mono16{.format = 1, .dstBits = 12};
  for (uint32_t code : {0u, 9u, 200u, 0xFFFFFFFFu}) {
    Call other8 = mono8, other16 = mono16;
    other8.algorithm = other16.algorithm = code;
    EXPECT_EQ(converted(other8, kBytes), converted(mono8, kBytes));
    EXPECT_EQ(converted(other8, kSamples16), converted(mono8, kSamples16));
    EXPECT_EQ(converted(other16, kSamples16), converted(mono16, kSamples16));
  }
}

TEST_P(Convert, BytesHaveNoSixteenBitFormats) {
  for (uint32_t format : {1u, 6u})
    for (uint32_t skip : {0u, 1u})
      for (uint32_t code : {0u, 9u})
        expectRejected({.format = format, .algorithm = code, .skip = skip}, kBytes);
  EXPECT_TRUE(bufferUntouched());
}

TEST_P(Convert, Bgr48OfBytesRunsAndWritesNothing) {
  expectNothingWritten({.format = 7}, kBytes);
  EXPECT_FALSE(bufferUntouched());
  expectNothingWritten({.format = 7, .skip = 1}, kBytes);
}

TEST_P(Convert, UnknownFormatsFillTheWorkBufferAndWriteNothing) {
  Image unused(16 * 8 * 3);
  for (uint32_t format : {8u, 255u, 0xFFFFFFFFu}) {
    const auto left = [&](uint32_t of, const auto& frame) {
      std::fill_n(buffer(), 12 * 60, uint16_t{0xEEEE});
      EXPECT_EQ(convert({.format = of}, frame, unused.data()), 1u);
      return Samples16(buffer(), buffer() + 12 * 60);  // 16 x 8 pixels within their guard
    };
    expectNothingWritten({.format = format}, kBytes);
    expectNothingWritten({.format = format}, kSamples16);
    EXPECT_EQ(left(format, kBytes), left(IMG_FMT_BGR24, kBytes));
    EXPECT_EQ(left(format, kSamples16), left(IMG_FMT_BGR24, kSamples16));
  }
}

TEST_P(Convert, BinningAboveThreeIsSilent) {
  for (uint32_t format : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u})
    for (uint32_t skip : {0u, 1u}) {
      const Call call{.format = format, .binning = 4, .roiWidth = 6, .roiHeight = 6, .skip = skip};
      expectNothingWritten(call, Samples16(3 * 64 * 64));
      if (format != 1 && format != 6) expectNothingWritten(call, Bytes(3 * 64 * 64));
    }
}

TEST_P(Convert, BothArgbCodesGiveTheSameBytes) {
  for (uint32_t binning = 0; binning < 4; ++binning)
    for (uint32_t bayer = 0; bayer < 4; ++bayer) {
      Call three{.format = 3, .bayer = bayer, .binning = binning}, four = three;
      four.format = 4;
      EXPECT_EQ(converted(three, kBytes), converted(four, kBytes));
      for (uint32_t lutMode : {0u, 2u, 4u}) {
        three.lutMode = four.lutMode = lutMode;
        EXPECT_EQ(converted(three, kSamples16), converted(four, kSamples16));
      }
    }
}

TEST_P(Convert, ArgbKeepsTheFirstByteOfEveryPixel) {
  const Bytes argb = converted({.format = 3}, kBytes), bgr = converted({.format = 2}, kBytes);
  for (size_t i = 0; i < 16 * 8; ++i) {
    EXPECT_EQ(argb[4 * i], 0x55);
    for (size_t c = 0; c < 3; ++c) EXPECT_EQ(argb[4 * i + 3 - c], bgr[3 * i + c]);
  }
}

TEST_P(Convert, MonoFormatsWorkUnderAnUnknownId) {
  const Call known{.format = 0}, unknown{.format = 0, .id = 12345};
  EXPECT_EQ(converted(unknown, kBytes), converted(known, kBytes));
  EXPECT_EQ(converted(unknown, kSamples16), converted(known, kSamples16));
  EXPECT_EQ(converted({.format = 1, .dstBits = 12, .id = 12345}, kSamples16),
            converted({.format = 1, .dstBits = 12}, kSamples16));
}

TEST_P(Convert, MonoFormatsLeaveTheWorkBufferAlone) {
  converted({.format = 0, .binning = 1}, kBytes);
  converted({.format = 0, .lutMode = 3, .skip = 1}, kSamples16);
  converted({.format = 1, .dstBits = 12}, kSamples16);
  EXPECT_TRUE(bufferUntouched());
}

TEST_P(Convert, MonoFormatsIgnoreTheSkipFlag) {
  const Call region{.format = 0, .binning = 1, .roiX = 3, .roiY = 2};
  Call skipped = region;
  skipped.skip = 1;
  EXPECT_EQ(converted(skipped, kBytes), converted(region, kBytes));
  EXPECT_EQ(converted(skipped, kSamples16), converted(region, kSamples16));
}

TEST_P(Convert, BytesIgnoreTheSourceBits) {
  for (uint32_t format : {0u, 2u, 5u})
    for (uint32_t srcBits : {0u, 1u, 10u, 16u, 0xFFFFFFFFu})
      EXPECT_EQ(converted({.format = format, .srcBits = srcBits}, kBytes),
                converted({.format = format, .srcBits = 8}, kBytes));
}

TEST_P(Convert, TheFramesHeightIsNotRead) {
  for (uint32_t format : {0u, 2u, 5u}) {
    const Call full{.format = format, .dstBits = format == 5 ? 8u : 24u};
    Call none = full;
    none.imgHeight = 0;
    EXPECT_EQ(converted(none, kBytes), converted(full, kBytes));
    EXPECT_EQ(converted(none, kSamples16), converted(full, kSamples16));
  }
}

TEST_P(Convert, Mono8IgnoresTheDestinationBits) {
  for (uint32_t dstBits : {0u, 9u, 16u, 0xFFFFFFFFu})
    EXPECT_EQ(converted({.format = 0, .dstBits = dstBits}, kSamples16),
              converted({.format = 0}, kSamples16));
}

// 12 bits to 8: four samples of 0x12F become 0x12 each, their sum is halved.
TEST_P(Convert, ATwelveBitFrameBinnedByTwo) {
  const Call call{.binning = 1, .roiWidth = 32, .roiHeight = 32};
  for (uint32_t bayer = 0; bayer < 4; ++bayer) {
    Call phase = call;
    phase.bayer = bayer;
    EXPECT_THAT(converted(phase, flat<uint16_t>(64 * 64, 0x12F)), Each(0x24));
    EXPECT_THAT(converted(phase, flat<uint16_t>(64 * 64, 0xFFF)), Each(255));
    EXPECT_THAT(converted(phase, flat<uint16_t>(64 * 64, 0x00F)), Each(0));
  }
}

TEST_P(SkipDemosaic, TheCodeIsNotLookedAt) {
  const Call call{.algorithm = 9, .skip = 1};
  EXPECT_EQ(converted(call, kBytes), Bytes(kBytes.begin(), kBytes.begin() + 3 * 16 * 8));
  Bytes expected;
  for (size_t i = 0; i < 3 * 16 * 8; ++i)
    expected.push_back(static_cast<uint8_t>(kSamples16[i] >> 4));
  EXPECT_EQ(converted(call, kSamples16), expected);
}

TEST_P(SkipDemosaic, AnyNonzeroFlagCounts) {
  for (uint32_t skip : {1u, 2u, 256u, 0x80000000u}) {
    EXPECT_EQ(converted({.skip = skip}, kBytes), converted({.skip = 1}, kBytes));
    EXPECT_EQ(converted({.skip = skip}, kSamples16), converted({.skip = 1}, kSamples16));
  }
  EXPECT_TRUE(bufferUntouched());
}

TEST_P(SkipDemosaic, IgnoresTheOriginTheFrameSizeAndThePhase) {
  for (uint32_t format : {2u, 3u}) {
    const Call here{.format = format, .binning = 1, .skip = 1};
    const Call elsewhere{.format = format,
                         .bayer = 3,
                         .binning = 1,
                         .imgWidth = 1,
                         .imgHeight = 1,
                         .roiX = 5,
                         .roiY = 1000,
                         .skip = 1};
    EXPECT_EQ(converted(elsewhere, kBytes), converted(here, kBytes));
    EXPECT_EQ(converted(elsewhere, kSamples16), converted(here, kSamples16));
  }
}

TEST_P(SkipDemosaic, RowsAreAsLongAsTheBinnedRegion) {
  // Rows of 2 * 16 pixels: row r holds r, and pixel rows 2y and 2y + 1 sum to 4y + 1 twice.
  const Bytes image = painted<uint8_t>(3 * 32, 16, [](uint32_t, uint32_t y) { return y; });
  const Bytes result = converted({.binning = 1, .skip = 1}, image);
  for (size_t i = 0; i < result.size(); ++i) EXPECT_EQ(result[i], 4 * (i / 48) + 1);
}

TEST_P(SkipDemosaic, IsDoneForEveryColourFormatThereIsOrNot) {
  for (uint32_t format : {8u, 99u, 0xFFFFFFFFu}) {
    expectNothingWritten({.format = format, .skip = 1}, kBytes);
    expectNothingWritten({.format = format, .skip = 1}, kSamples16);
  }
  const Samples16 image(3 * 20 * 8 + 12 * 8, 1000);
  EXPECT_THAT(converted({.format = 6, .dstBits = 12, .skip = 1}, image)[0], 1000 & 255);
  EXPECT_THAT(converted({.format = 7, .dstBits = 36, .skip = 1}, image)[1], 1000 >> 8);
}

TEST_P(SkipDemosaic, WorksUnderAnUnknownId) {
  EXPECT_EQ(converted({.skip = 1, .id = 12345}, kBytes), converted({.skip = 1}, kBytes));
  EXPECT_EQ(converted({.skip = 1, .id = 12345}, kSamples16), converted({.skip = 1}, kSamples16));
}

TEST_P(Convert, AColourFormatUnderAnUnknownIdFaultsAtOnce) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  std::vector<uint8_t> image(16 * 8 * 3);
  EXPECT_DEATH(convert({.id = 12345}, kBytes, image.data()), "");
  EXPECT_DEATH(convert({.id = 12345}, kSamples16, image.data()), "");
}

}  // namespace
}  // namespace vistrel::core::test
