// The C++ interface: transfer curves, finishing, calibration.
#include <gmock/gmock.h>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

// 65535 / 2, rounded up.
TEST(CppTransfer, MakesPointsInAVector) {
  EXPECT_THAT(makeTransfer(VISTREL_TRANSFER_LINEAR, 0, 3), ElementsAre(0, 32768, 65535));
  EXPECT_EQ(makeTransfer(VISTREL_TRANSFER_SRGB, 0).size(), 65536u);
  EXPECT_EQ(parseTransfer("asinh"), uint32_t{VISTREL_TRANSFER_ASINH});
  EXPECT_STREQ(transferName(VISTREL_TRANSFER_GAMMA), "gamma");
}

TEST(CppTransfer, RejectsWhatTheCInterfaceRejects) {
  EXPECT_STREQ(tryMakeTransfer(VISTREL_TRANSFER_GAMMA, 99).error().what(),
               "parameter 99: transfer curve gamma allows 100 to 10000 thousandths");
  for (const size_t count : {size_t{0}, size_t{1}, size_t{65537}, SIZE_MAX})
    EXPECT_EQ(tryMakeTransfer(VISTREL_TRANSFER_SRGB, 0, count).error().status(), VISTREL_BAD_COUNT);
  EXPECT_THROW(makeTransfer(4, 0), Error);
  EXPECT_EQ(tryParseTransfer("log").error().status(), VISTREL_BAD_TRANSFER);
  EXPECT_THROW(parseTransfer("log"), Error);
}

// A curve from white to black.
TEST(CppFinish, RefersToACurve) {
  const uint8_t samples[] = {0, 85, 255};
  const vistrel_frame frame = frameOf(samples, 3, 1, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  const uint16_t points[] = {65535, 0};
  const vistrel_finish inverted = finishOf(points), plain = finishOf({});
  setFinish(c, inverted);
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(255, 170, 0));
  setFinish(c, plain);
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(0, 85, 255));
  const vistrel_finish tooLong = finishOf({points, (size_t{1} << 32) + 2});
  setFinish(c, tooLong);
  EXPECT_EQ(tryConvert(frame, c).error().status(), VISTREL_BAD_FINISH) << "not cut to 2 points";
}

// The means are 150 and 50: 4096 * 150 / 100, 4096 * 150 / 200.
TEST(CppFlat, IsAVectorOfGains) {
  const uint8_t samples[] = {100, 50, 200, 50};
  const vistrel_frame frame = frameOf(samples, 4, 1, VISTREL_MONO);
  EXPECT_THAT(measureFlat(frame, defaultConversion(frame)), ElementsAre(6144, 4096, 3072, 4096));
}

TEST(CppFlat, RejectsWhatTheCInterfaceRejects) {
  const uint8_t samples[12] = {};
  vistrel_frame frame = frameOf(samples, 4, 3, VISTREL_RGGB);
  const vistrel_conversion c = defaultConversion(frame);
  const auto expect = [&](int32_t status, const char* text) {
    const auto flat = tryMeasureFlat(frame, c);
    ASSERT_FALSE(flat);
    EXPECT_EQ(flat.error().status(), status);
    EXPECT_STREQ(flat.error().what(), text);
    EXPECT_THROW(measureFlat(frame, c), Error);
  };
  frame.size = 11;
  expect(VISTREL_SHORT_BUFFER, "frame.size 11: 3 rows of stride 4 take 12 bytes");
  frame.width = 0;
  expect(VISTREL_BAD_SIZE, "frame.width 0: a frame has at least 1 column");
  frame.width = frame.height = uint32_t{1} << 31;
  frame.size = SIZE_MAX;  // more gains than a vector can hold
  EXPECT_EQ(tryMeasureFlat(frame, c).error().status(), VISTREL_SHORT_BUFFER);
}

// 100, 50 and 200 without dark, times 1.5, 1 and 0.75; the last pixel takes its neighbour's value.
TEST(CppCalibration, RefersToLevelsGainsAndPixels) {
  const uint8_t samples[] = {110, 60, 210, 77};
  const uint16_t dark[] = {10, 10, 10, 10}, flat[] = {6144, 4096, 3072, 4096};
  const vistrel_point hot[] = {{3, 0}};
  const vistrel_frame frame = frameOf(samples, 4, 1, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  const vistrel_calibration all = calibrationOf(dark, flat, hot), none = calibrationOf({}, {}, {});
  setCalibration(c, all);
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(150, 50, 150, 150));
  setCalibration(c, none);
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(110, 60, 210, 77));
  const vistrel_calibration tooShort = calibrationOf({dark, 3}, {}, {});
  setCalibration(c, tooShort);
  EXPECT_EQ(tryConvert(frame, c).error().status(), VISTREL_SHORT_BUFFER);
}

}  // namespace
}  // namespace vistrel
