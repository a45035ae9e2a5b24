// Where samples with excess bits are looked for, and which one is reported.
#include "tests/host/random_case.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ExcessSample = LargeFrame;

TEST_F(ExcessSample, IsReportedByPlaceWithTheImageUntouched) {
  const OwnTeam team(4);
  conversion.threads = 4, conversion.team = team;
  for (const uint32_t y : {699u, 650u, 300u, 299u, 7u, 0u})
    for (const uint32_t x : {999u, 40u}) {
      samples[y * kWidth + x] = 4096;
      vistrel_error error{};
      EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, &error), VISTREL_EXCESS_SAMPLE);
      expectError(error, {VISTREL_EXCESS_SAMPLE, "frame.samples",
                          "4096 at column " + std::to_string(x) + ", row " + std::to_string(y),
                          "samples of 12 bits are at most 4095"});
      EXPECT_TRUE(isUntouched());
    }
}

TEST(SomeRows, CheckOnlyWhatTheyAreMadeFrom) {
  const OwnStream stream;
  std::vector<uint16_t> samples(40 * 60, 9);
  samples[40 * 30 + 7] = 5000;
  const vistrel_frame frame = frameOf(samples, 40, 60, 12, VISTREL_RGGB);
  const vistrel_conversion c = defaultConversion(frame);
  std::vector<uint8_t> pixels(40 * 60 * 3);
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  const auto make = [&](uint32_t first, uint32_t rows) {
    return vistrel_convert_rows(stream, &frame, &c, &image, first, rows, nullptr);
  };
  EXPECT_EQ(make(0, 21), VISTREL_OK);
  EXPECT_EQ(make(40, 20), VISTREL_OK);
  EXPECT_EQ(make(28, 4), VISTREL_EXCESS_SAMPLE);
}

}  // namespace
}  // namespace vistrel
