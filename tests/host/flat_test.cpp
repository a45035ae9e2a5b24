// Measured flat fields, by hand.
#include <gmock/gmock.h>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

// The means are 150 at even and 60 at odd columns.
TEST(Flat, GainsMakeAFrameEven) {
  const std::vector<uint8_t> samples{110, 40, 210, 100};
  const vistrel_frame frame = frameOf(samples, 4, 1, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  setBlack(c, 10);
  std::vector<uint16_t> flat(4);
  ASSERT_EQ(vistrel_measure_flat(&frame, &c, flat.data(), 8, nullptr), VISTREL_OK);
  // 4096 times 150 / 100, 60 / 30, 150 / 200, 60 / 90.
  EXPECT_THAT(flat, ElementsAre(6144, 8192, 3072, 2731));
  vistrel_calibration calibration{};
  calibration.flat = flat.data(), calibration.flat_size = 8;
  c.calibration = &calibration;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(150, 60, 150, 60));
}

TEST(Flat, HasGainsWithoutLight) {
  const std::vector<uint16_t> samples{0, 0, 300, 0};
  const vistrel_frame frame = frameOf(samples, 4, 1, 12, VISTREL_MONO);
  const vistrel_conversion c = defaultConversion(frame);
  std::vector<uint16_t> flat(4);
  ASSERT_EQ(vistrel_measure_flat(&frame, &c, flat.data(), 8, nullptr), VISTREL_OK);
  EXPECT_THAT(flat, ElementsAre(65535, 4096, 2048, 4096));
}

TEST(Flat, RejectsShortMemory) {
  const std::vector<uint8_t> samples(6);
  const vistrel_frame frame = frameOf(samples, 3, 2, VISTREL_MONO);
  const vistrel_conversion c = defaultConversion(frame);
  std::vector<uint16_t> flat(6);
  vistrel_error error{};
  vistrel_measure_flat(&frame, &c, flat.data(), 11, &error);
  expectError(error, {VISTREL_SHORT_BUFFER, "size", "11", "gains of 3x2 pixels take 12 bytes"});
}

}  // namespace
}  // namespace vistrel
