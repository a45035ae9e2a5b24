// The finishing stage, by hand. The harness compares it with a literal model.
#include <gmock/gmock.h>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

vistrel_finish plainFinish() {
  vistrel_finish finish{};
  finish.exposure = VISTREL_EXPOSURE_ONE;
  return finish;
}

// A conversion that is finished, and what it refers to.
struct Finishing {
  explicit Finishing(const vistrel_frame& f) : frame(f), conversion(defaultConversion(f)) {
    conversion.finish = &finish;
  }
  Finishing(const Finishing&) = delete;

  void setGains(uint32_t red, uint32_t green, uint32_t blue) {
    conversion.white_balance = VISTREL_BALANCE_GAINS;
    conversion.gains[0] = red, conversion.gains[1] = green, conversion.gains[2] = blue;
  }
  vistrel_error rejection() const { return rejectionOf(frame, conversion); }

  vistrel_frame frame;
  vistrel_conversion conversion;
  vistrel_finish finish = plainFinish();
};

// Ten bits between black 64 and white 959: 65535 / 895 is 73.2235.
TEST(FinishedMono, HasSixteenBitsFromBlackToWhite) {
  const std::vector<uint16_t> samples{0, 64, 65, 164, 958, 959, 1023};
  Finishing f(frameOf(samples, 7, 1, 10, VISTREL_MONO));
  setBlack(f.conversion, 64);
  f.conversion.white = 959;
  f.conversion.format = VISTREL_MONO16;
  const Image image = convert(f.frame, f.conversion);
  EXPECT_EQ(image.layout.bits, 16u);
  EXPECT_THAT(samples16Of(image), ElementsAre(0, 0, 73, 7322, 65462, 65535, 65535));
  f.conversion.format = VISTREL_MONO8;  // 7322 / 257 is 28.49
  EXPECT_THAT(convert(f.frame, f.conversion).pixels, ElementsAre(0, 0, 0, 28, 255, 255, 255));
}

TEST(FinishedMono, MakesSixteenBitsOfBytes) {
  const std::vector<uint8_t> samples{0, 1, 128, 255};
  Finishing f(frameOf(samples, 4, 1, VISTREL_MONO));
  f.conversion.format = VISTREL_MONO16;
  EXPECT_THAT(samples16Of(convert(f.frame, f.conversion)), ElementsAre(0, 257, 32896, 65535));
}

TEST(FinishedMono, ExposureMultipliesLight) {
  const std::vector<uint8_t> samples{0, 16, 102, 128, 255};
  Finishing f(frameOf(samples, 5, 1, VISTREL_MONO));
  f.finish.exposure = 10240;  // 2.5
  EXPECT_THAT(convert(f.frame, f.conversion).pixels, ElementsAre(0, 40, 255, 255, 255));
  f.finish.exposure = 2048;  // a half: 8, 51, 64, 127.5
  EXPECT_THAT(convert(f.frame, f.conversion).pixels, ElementsAre(0, 8, 51, 64, 128));
}

TEST(FinishedMono, TransferRunsThroughItsPoints) {
  const std::vector<uint8_t> samples{0, 51, 255};
  const std::vector<uint16_t> negative{65535, 0};
  Finishing f(frameOf(samples, 3, 1, VISTREL_MONO));
  f.finish.transfer = negative.data();
  f.finish.transfer_points = 2;
  EXPECT_THAT(convert(f.frame, f.conversion).pixels, ElementsAre(255, 204, 0));
}

// A plain colour in every phase: red 100, green 200, blue 50 of 255, gains 2, 1 and 4. The largest
// gain makes no difference: it scales the samples down and the light up again.
TEST(FinishedColour, GainsBalance) {
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const auto samples = samplesOf<uint8_t>(12, 10, plainColour(phase, 50, 200, 100));
    Finishing f(frameOf(samples, 12, 10, phase));
    f.setGains(8192, 4096, 16384);
    EXPECT_THAT(plainPixel(convert(f.frame, f.conversion)), ElementsAre(200, 200, 200)) << phase;
    f.conversion.format = VISTREL_RGB24;
    f.setGains(4096, 4096, 4096);
    EXPECT_THAT(plainPixel(convert(f.frame, f.conversion)), ElementsAre(100, 200, 50)) << phase;
  }
}

// Red becomes half the sum of red and green, green what blue was, blue what is left of red.
TEST(FinishedColour, MatrixMixesColours) {
  const auto samples = samplesOf<uint8_t>(12, 10, plainColour(VISTREL_RGGB, 50, 200, 100));
  Finishing f(frameOf(samples, 12, 10, VISTREL_RGGB));
  const int32_t matrix[] = {2048, 2048, 0, 0, 0, 4096, 4096, -4096, 0};
  std::copy(std::begin(matrix), std::end(matrix), f.finish.matrix);
  EXPECT_THAT(plainPixel(convert(f.frame, f.conversion)), ElementsAre(0, 50, 150));
  f.conversion.format = VISTREL_RGB24;
  EXPECT_THAT(plainPixel(convert(f.frame, f.conversion)), ElementsAre(150, 50, 0));
}

// A plain colour in a frame that clips at 959 of 1023, at half exposure, which shows what is above
// white.
std::vector<uint32_t> highlight(unsigned blue, unsigned green, unsigned red, uint32_t gainOfBlue,
                                uint32_t highlights) {
  const auto samples = samplesOf<uint16_t>(12, 10, plainColour(VISTREL_GRBG, blue, green, red));
  Finishing f(frameOf(samples, 12, 10, 10, VISTREL_GRBG));
  f.conversion.white = 959;
  f.setGains(8192, 4096, gainOfBlue);
  f.finish.exposure = 2048;
  f.finish.highlights = highlights;
  return plainPixel(convert(f.frame, f.conversion));
}
constexpr uint32_t kClip = VISTREL_HIGHLIGHTS_CLIP, kNeutral = VISTREL_HIGHLIGHTS_NEUTRAL;

// Where green clips and red and blue don't, as white fur does, gains would make the pixel pink: the
// clipped green is less than it was in the scene. Half of 700 * 2 and 959 of 959: 186.1, and just
// below 127.5 of 255.
TEST(Highlights, AreNeutralWhereOneColourClips) {
  EXPECT_THAT(highlight(700, 959, 700, 8192, kClip), ElementsAre(186, 127, 186));
  EXPECT_THAT(highlight(700, 959, 700, 8192, kNeutral), ElementsAre(186, 186, 186));
}

// As half of 600 * 2 is 159.5, green becomes 172.8.
TEST(Highlights, LieBetweenTheOtherColours) {
  EXPECT_THAT(highlight(600, 959, 700, 8192, kNeutral), ElementsAre(160, 173, 186));
}

TEST(Highlights, FollowTheLastColourThatIsNotClipped) {
  EXPECT_THAT(highlight(959, 959, 700, 4096, kClip), ElementsAre(127, 127, 186));
  EXPECT_THAT(highlight(959, 959, 700, 4096, kNeutral), ElementsAre(186, 186, 186));
}

TEST(Highlights, AreWhiteWhereAllColoursClip) {
  EXPECT_THAT(highlight(959, 959, 959, 4096, kNeutral), ElementsAre(255, 255, 255));
}

// Orange, and a red lamp. Half of 900 * 2 and 50 * 2 of 959: 239.3 and 13.3. Their middle is less
// than the clipped green.
TEST(Highlights, KeepSaturatedColours) {
  EXPECT_THAT(highlight(50, 959, 900, 8192, kNeutral), ElementsAre(13, 127, 239));
  EXPECT_THAT(highlight(100, 50, 959, 8192, kNeutral), ElementsAre(27, 7, 255));
}

// Green clips more and more, from 15/16 of white to all of it; nothing jumps.
TEST(Highlights, BeginGradually) {
  uint32_t before = 119;
  for (unsigned green = 895; green <= 959; green += 4) {
    const uint32_t now = highlight(700, green, 700, 8192, kNeutral)[1];
    EXPECT_GE(now, before) << green;
    EXPECT_LE(now, before + 8) << green;
    before = now;
  }
  EXPECT_EQ(before, 186);
}

// A colour that only its gain makes brighter than white has not clipped: it stays.
TEST(Highlights, KeepColoursThatTheSensorHolds) {
  const auto samples = samplesOf<uint16_t>(12, 10, plainColour(VISTREL_GRBG, 100, 200, 800));
  Finishing f(frameOf(samples, 12, 10, 10, VISTREL_GRBG));
  f.setGains(8192, 4096, 8192);
  f.finish.highlights = VISTREL_HIGHLIGHTS_NEUTRAL;
  EXPECT_THAT(plainPixel(convert(f.frame, f.conversion)), ElementsAre(50, 50, 255));
}

TEST(FinishedBins, AreSumsOrMeans) {
  const std::vector<uint8_t> samples{10, 20, 30, 41};
  Finishing f(frameOf(samples, 2, 2, VISTREL_MONO));
  f.conversion.binning = 2;
  EXPECT_THAT(convert(f.frame, f.conversion).pixels, ElementsAre(50));  // 12978.5 / 257
  f.conversion.bin_mode = VISTREL_BIN_MEAN;
  EXPECT_THAT(convert(f.frame, f.conversion).pixels, ElementsAre(25));  // 101 / 4
  f.conversion.finish = nullptr;
  EXPECT_THAT(convert(f.frame, f.conversion).pixels, ElementsAre(25));
}

TEST(Finishing, CountsItsTableAsWorkingMemory) {
  vistrel_frame frame = mono(64, 48);
  Finishing f(frame);
  vistrel_layout with{}, without{};
  ASSERT_EQ(vistrel_get_layout(&f.frame, &f.conversion, &with, nullptr), VISTREL_OK);
  f.conversion.finish = nullptr;
  ASSERT_EQ(vistrel_get_layout(&f.frame, &f.conversion, &without, nullptr), VISTREL_OK);
  EXPECT_GE(with.working_bytes, without.working_bytes + 65536);
}

// No argument of a finish can do harm.
struct BadFinish {
  const char* name;
  void (*change)(Finishing& f);
  Rejection expected;
};
const uint16_t kPoints[2] = {0, 65535};
const BadFinish kBadFinishes[] = {
    {"Exposure0",
     [](Finishing& f) { f.finish.exposure = 0; },
     {VISTREL_BAD_FINISH, "finish.exposure", "0",
      "1 to 268435456 are allowed; 4096 is an exposure of 1"}},
    {"Exposure",
     [](Finishing& f) { f.finish.exposure = 268435457; },
     {VISTREL_BAD_FINISH, "finish.exposure", "268435457",
      "1 to 268435456 are allowed; 4096 is an exposure of 1"}},
    {"Highlights",
     [](Finishing& f) { f.finish.highlights = 2; },
     {VISTREL_BAD_FINISH, "finish.highlights", "2", "0 (clip) and 1 (neutral) are allowed"}},
    {"Matrix",
     [](Finishing& f) { f.finish.matrix[3] = -32767, f.finish.matrix[5] = 1; },
     {VISTREL_BAD_FINISH, "finish.matrix[3]", "-32767",
      "the absolute values of its row add up to 32768; 32767 is allowed"}},
    {"SmallestNumber",
     [](Finishing& f) { f.finish.matrix[8] = INT32_MIN; },
     {VISTREL_BAD_FINISH, "finish.matrix[6]", "0",
      "the absolute values of its row add up to 2147483648; 32767 is allowed"}},
    {"MatrixOfMono",
     [](Finishing& f) { f.frame = mono(9, 9), f.conversion.format = 0, f.finish.matrix[1] = 1; },
     {VISTREL_BAD_FINISH, "finish.matrix[1]", "1",
      "a mono frame has no colours; only 0 is allowed"}},
    {"PointsWithoutTransfer",
     [](Finishing& f) { f.finish.transfer_points = 2; },
     {VISTREL_BAD_FINISH, "finish.transfer_points", "2", "without transfer, only 0 is allowed"}},
    {"OnePoint",
     [](Finishing& f) { f.finish.transfer = kPoints, f.finish.transfer_points = 1; },
     {VISTREL_BAD_FINISH, "finish.transfer_points", "1", "2 to 65536 are allowed"}},
    {"TooManyPoints",
     [](Finishing& f) { f.finish.transfer = kPoints, f.finish.transfer_points = 65537; },
     {VISTREL_BAD_FINISH, "finish.transfer_points", "65537", "2 to 65536 are allowed"}},
    {"Reserved",
     [](Finishing& f) { f.finish.reserved[7] = 1; },
     {VISTREL_BAD_RESERVED, "finish.reserved[7]", "1", "only 0 is allowed in this version"}},
    {"Reduction",
     [](Finishing& f) { f.conversion.reduction = VISTREL_CURVE_3; },
     {VISTREL_BAD_REDUCTION, "conversion.reduction", "4",
      "finished pixels are not reduced; only 0 is allowed"}},
    {"RawGray",
     [](Finishing& f) {
       f.conversion.format = VISTREL_GRAY8, f.conversion.gray = VISTREL_RAW_GRAY;
     },
     {VISTREL_BAD_FINISH, "conversion.finish", "", "raw gray is not finished"}},
    {"FinishedPixels",
     [](Finishing& f) { f.frame.phase = VISTREL_BGR; },
     {VISTREL_BAD_FINISH, "conversion.finish", "",
      "it is for Bayer and mono frames; this one is bgr"}},
    {"WhiteAtBlack",
     [](Finishing& f) { f.conversion.white = 64, f.conversion.black[3] = 64; },
     {VISTREL_BAD_WHITE, "conversion.white", "64",
      "it must be above the black levels; the highest is 64"}},
    {"BlackAtFullScale",
     [](Finishing& f) { f.conversion.black[0] = 4095; },
     {VISTREL_BAD_WHITE, "conversion.white", "4095",
      "it must be above the black levels; the highest is 4095"}},
    {"WhiteAboveFullScale",
     [](Finishing& f) { f.conversion.white = 4096; },
     {VISTREL_BAD_WHITE, "conversion.white", "4096", "samples of 12 bits are at most 4095"}},
    {"BinMode",
     [](Finishing& f) { f.conversion.bin_mode = 2; },
     {VISTREL_BAD_BINNING, "conversion.bin_mode", "2", "0 (sum) and 1 (mean) are allowed"}},
    {"Orientation",
     [](Finishing& f) { f.conversion.orientation = 9; },
     {VISTREL_BAD_ORIENTATION, "conversion.orientation", "9", "0 to 8 are allowed"}},
};

struct FinishValidation : ::testing::TestWithParam<BadFinish> {};

TEST_P(FinishValidation, NamesArgumentValueAndReason) {
  Finishing f(bayer(64, 48));
  GetParam().change(f);
  expectError(f.rejection(), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Finish, FinishValidation, ::testing::ValuesIn(kBadFinishes),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vistrel
