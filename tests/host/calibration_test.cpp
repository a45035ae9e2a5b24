// Dark frames, flat fields and hot pixels, by hand.
#include <gmock/gmock.h>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

struct CalibratedRow {
  explicit CalibratedRow(const std::vector<uint8_t>& samples, uint32_t phase = VISTREL_MONO)
      : frame(frameOf(samples, uint32_t(samples.size()), 1, phase)),
        conversion(defaultConversion(frame)) {
    conversion.calibration = &calibration;
  }
  CalibratedRow(const CalibratedRow&) = delete;

  void setDark(const std::vector<uint16_t>& levels) {
    calibration.dark = levels.data(), calibration.dark_size = 2 * levels.size();
  }
  void setFlat(const std::vector<uint16_t>& gains) {
    calibration.flat = gains.data(), calibration.flat_size = 2 * gains.size();
  }
  void setHot(const std::vector<vistrel_point>& pixels) {
    calibration.hot = pixels.data(), calibration.hot_count = pixels.size();
  }
  Bytes pixels() const { return convert(frame, conversion).pixels; }
  void expectRejected(const Rejection& expected) const {
    expectError(rejectionOf(frame, conversion), expected);
  }

  vistrel_frame frame;
  vistrel_conversion conversion;
  vistrel_calibration calibration{};
};

TEST(Calibration, TakesDarkAndBlackThenEvensOut) {
  const std::vector<uint8_t> samples{100, 100, 100, 20, 255};
  const std::vector<uint16_t> dark{0, 30, 200, 5, 0}, flat{4096, 8192, 4096, 2048, 65535};
  CalibratedRow row(samples);
  row.setDark(dark);
  setBlack(row.conversion, 10);
  EXPECT_THAT(row.pixels(), ElementsAre(90, 60, 0, 5, 245));
  row.setFlat(flat);
  EXPECT_THAT(row.pixels(), ElementsAre(90, 120, 0, 3, 255));  // 5 / 2 is rounded up
}

// Neighbours that are hot too are passed over; at the ends there is one neighbour, or none.
TEST(Calibration, ReplacesHotPixels) {
  const std::vector<uint8_t> samples{250, 10, 20, 255, 254, 61, 70};
  const std::vector<vistrel_point> hot{{0, 0}, {3, 0}, {4, 0}};
  CalibratedRow row(samples);
  row.setHot(hot);
  EXPECT_THAT(row.pixels(), ElementsAre(10, 10, 20, 41, 41, 61, 70));  // (20 + 61 + 1) / 2
  const std::vector<vistrel_point> all{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}, {6, 0}};
  row.setHot(all);
  EXPECT_THAT(row.pixels(), Each(0));
}

// A hot pixel gets what its neighbours are, not its own dark level.
TEST(Calibration, TakesTheDarkOfTheNeighbours) {
  const std::vector<uint8_t> samples{50, 255, 60};
  const std::vector<uint16_t> dark{10, 240, 20};
  const std::vector<vistrel_point> hot{{1, 0}};
  CalibratedRow row(samples);
  row.setDark(dark);
  row.setHot(hot);
  EXPECT_THAT(row.pixels(), ElementsAre(40, 40, 40));
}

// In a mosaic, neighbours of the same colour are two columns away, outside the region too.
TEST(Calibration, KeepsToTheColourOfAMosaic) {
  auto samples = samplesOf<uint8_t>(8, 6, plainColour(VISTREL_RGGB, 50, 100, 200));
  samples[2 * 8 + 4] = 255;
  const std::vector<vistrel_point> hot{{4, 2}};
  vistrel_calibration calibration{};
  calibration.hot = hot.data(), calibration.hot_count = 1;
  const vistrel_frame frame = frameOf(samples, 8, 6, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  c.calibration = &calibration;
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(50, 100, 200));
  c.region = {4, 2, 2, 2};
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(50, 100, 200));
}

TEST(Calibration, RejectsWhatIsNotForTheFrame) {
  const std::vector<uint8_t> samples(9);
  const std::vector<uint16_t> levels(9);
  const std::vector<vistrel_point> outside{{9, 0}}, twice{{3, 0}, {3, 0}};
  CalibratedRow row(samples);
  row.setDark(levels);
  row.calibration.dark_size = 17;
  row.expectRejected(
      {VISTREL_SHORT_BUFFER, "calibration.dark_size", "17", "1 rows of stride 18 take 18 bytes"});
  row.calibration.dark_size = 18, row.calibration.dark_stride = 17;
  row.expectRejected(
      {VISTREL_BAD_STRIDE, "calibration.dark_stride", "17", "a row of 9 levels has 18 bytes"});
  row.calibration.dark_stride = 0;
  row.setFlat(levels);
  row.calibration.flat_size = 0;
  row.expectRejected(
      {VISTREL_SHORT_BUFFER, "calibration.flat_size", "0", "1 rows of stride 18 take 18 bytes"});
  row.calibration.flat = nullptr;
  row.setHot(outside);
  row.expectRejected(
      {VISTREL_BAD_CALIBRATION, "calibration.hot[0]", "(9, 0)", "it lies outside the frame"});
  row.setHot(twice);
  row.expectRejected({VISTREL_BAD_CALIBRATION, "calibration.hot[1]", "(3, 0)",
                      "pixels come by rows and then columns, each one once"});
  row.calibration.hot = nullptr;
  row.expectRejected({VISTREL_NULL_POINTER, "calibration.hot", "", "must not be null"});
  row.calibration.hot_count = 0;
  row.calibration.reserved[2] = 1;
  row.expectRejected(
      {VISTREL_BAD_RESERVED, "calibration.reserved[2]", "1", "only 0 is allowed in this version"});
  row.calibration.reserved[2] = 0;
  row.frame.phase = VISTREL_BGR, row.conversion.format = VISTREL_BGR24;
  row.expectRejected({VISTREL_BAD_CALIBRATION, "conversion.calibration", "",
                      "it is for Bayer and mono frames; this one is bgr"});
}

}  // namespace
}  // namespace vistrel
