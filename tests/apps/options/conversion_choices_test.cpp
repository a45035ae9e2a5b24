// Algorithms, depths and gray from the command line.
#include <gtest/gtest.h>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

uint32_t texture(uint32_t x, uint32_t y) { return (x * x * 3 + 7 * x * y + (x ^ y) * 29) % 1024; }

struct Choices : ::testing::Test {
  Scratch scratch;

  Picture convert(const std::string& options) const {
    const Finished result = scratch.vistrel("convert in.pgm -o out.png --phase rggb " + options);
    EXPECT_EQ(result.err, "") << options;
    return readPng(scratch / "out.png");
  }
};

TEST_F(Choices, EveryAlgorithmGivesItsOwnPicture) {
  scratch.write("in.pgm", pgm(40, 30, 1023, texture));
  std::vector<std::vector<uint16_t>> pictures;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    const Picture picture = convert(std::string("-a ") + a->name);
    EXPECT_EQ(picture.samples.size(), 40 * 30 * 3u);
    for (const auto& other : pictures) EXPECT_NE(picture.samples, other) << a->name;
    pictures.push_back(picture.samples);
  }
}

// Green of a flat area with one bright site is smoothed only where its range is below the
// threshold.
TEST_F(Choices, ThresholdReachesTheEdgeAlgorithm) {
  scratch.write("in.pgm",
                pgm(40, 30, 255, [](auto x, auto y) { return 100 + texture(x, y) % 20; }));
  const auto sharp = convert("-a edge").samples;
  EXPECT_EQ(convert("-a edge:0").samples, sharp);
  EXPECT_NE(convert("-a edge:60").samples, sharp);
}

TEST_F(Choices, MoreThanTenBitsMustBeReduced) {
  scratch.write("in.pgm", pgm(40, 30, 4095, [](auto x, auto y) { return 4 * texture(x, y) + 3; }));
  const Finished result = scratch.vistrel("convert in.pgm -o out.png --phase rggb -a laroche");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(
      result.err,
      "vistrel: in.pgm: --algorithm laroche: it supports at most 10 bits; the samples have 12; "
      "--depth reduce10 drops the lowest bits first\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.pgm"});
  const auto reduced = convert("-a laroche --depth reduce10").samples;
  scratch.write("in.pgm", pgm(40, 30, 1023, texture));
  EXPECT_EQ(convert("-a laroche").samples, reduced);
  EXPECT_EQ(convert("-a laroche --depth reduce10").samples, reduced);
}

TEST_F(Choices, GrayIsLumaOrTheLibrarysOwn) {
  scratch.write("in.pgm", pgm(12, 10, 1023, [](uint32_t, uint32_t) { return 512; }));
  Picture picture = convert("--format gray8");
  EXPECT_EQ(picture.channels, 1u);
  EXPECT_EQ(picture.bits, 8u);
  EXPECT_EQ(picture.samples, std::vector<uint16_t>(120, 128));
  EXPECT_EQ(convert("--format gray8 --gray raw").samples, std::vector<uint16_t>(120, 127));
  picture = convert("--format gray16");
  EXPECT_EQ(picture.significant, 10u);
  EXPECT_EQ(picture.samples, std::vector<uint16_t>(120, 512 * 64 + 32));
  // For mono frames it makes no difference.
  ASSERT_EQ(scratch.vistrel("convert in.pgm -o out.pgm --phase mono --format gray16").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm"));
}

TEST_F(Choices, GrayFitsAPgm) {
  scratch.write("in.pgm", pgm(2, 2, 255, [](uint32_t, uint32_t) { return 65; }));
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb --format gray8 -o out.pgm").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), "P5\n2 2\n255\nAAAA");
  EXPECT_EQ(
      scratch.vistrel("convert in.pgm --phase rggb --format gray8 -o out.ppm").err,
      "vistrel: in.pgm: --format gray8 makes gray, and out.ppm holds colour: use .pgm or .png\n");
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb --format gray16 -o out.pgm").err,
            "vistrel: in.pgm: --format gray16: it needs 2 bytes per sample; this frame has "
            "1\n");
}

TEST_F(Choices, AlphaDoesNotFitAPpm) {
  scratch.write("in.pgm", pgm(4, 4, 255, texture));
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb --format rgba -o out.ppm").err,
            "vistrel: in.pgm: --format rgba makes colour with alpha, and out.ppm holds colour: use "
            ".pam or .png\n");
}

// Options that agree do not conflict.
TEST_F(Choices, DepthAndFormatThatAgree) {
  scratch.write("in.pgm", pgm(12, 10, 1023, texture));
  EXPECT_EQ(convert("--depth 16 --format bgr48").samples, convert("--depth 16").samples);
  EXPECT_EQ(convert("--depth 8 --format bgr24 --type png").samples, convert("").samples);
}

TEST_F(Choices, WithoutEffectCauseAWarning) {
  scratch.write("in.pgm", pgm(12, 10, 255, [](uint32_t x, uint32_t y) { return x * y; }));
  const std::string convert = "convert in.pgm -o out.pgm ";
  const Finished mono =
      scratch.vistrel(convert + "--phase mono -a ahd --edges padded --format gray8 --gray luma");
  EXPECT_EQ(mono.err,
            "vistrel: in.pgm: --algorithm ahd has no effect: the frame is mono\n"
            "vistrel: in.pgm: --edges padded has no effect: the frame is mono\n"
            "vistrel: in.pgm: --gray luma has no effect: the frame is mono\n");
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb --white 200 --bin-means -o out.png").err,
            "vistrel: in.pgm: --white 200 has no effect without --wb auto\n"
            "vistrel: in.pgm: --bin-means has no effect without --bin\n");
  EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm"));
  EXPECT_EQ(scratch.vistrel("convert in.pgm -o out.png --phase rggb --depth reduce10").err,
            "vistrel: in.pgm: --depth reduce10 has no effect: the frame has 8 bits\n");
}

TEST_F(Choices, RawGrayOfACompactImageIsRejected) {
  scratch.write("in.pgm", pgm(8, 8, 255, [](uint32_t, uint32_t) { return 65; }));
  const Finished result =
      scratch.vistrel("convert in.pgm --phase rggb --format gray8 --gray raw -a near -o out.png");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "vistrel: in.pgm: --gray raw: algorithm near has none\n");
}

}  // namespace
}  // namespace vistrel
