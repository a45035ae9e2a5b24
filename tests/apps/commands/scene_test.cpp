// The test scene is the same at every depth and phase.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

// The sample at (x, y) of a binary 16-bit PGM of that width.
int sampleOf(const std::string& file, uint32_t width, uint32_t height, uint32_t x, uint32_t y) {
  const size_t at = file.size() - 2 * width * height + 2 * (y * width + x);
  return static_cast<unsigned char>(file[at]) << 8 | static_cast<unsigned char>(file[at + 1]);
}

TEST(Scene, IsTheSameEveryTime) {
  const Scratch scratch;
  EXPECT_EQ(scratch.vistrel("scene -o a.pgm -s 90x60").status, 0);
  EXPECT_EQ(scratch.vistrel("scene -o b.pgm -s 90x60").status, 0);
  EXPECT_EQ(scratch.vistrel("scene -o c.pgm -s 90x60 --seed 2").status, 0);
  EXPECT_EQ(scratch.read("a.pgm"), scratch.read("b.pgm"));
  EXPECT_NE(scratch.read("a.pgm"), scratch.read("c.pgm"));
}

TEST(Scene, HasTheRequestedSizeAndDepth) {
  const Scratch scratch;
  EXPECT_EQ(scratch.vistrel("scene -o a.pgm -s 31x17 --bits 8 --phase mono").status, 0);
  EXPECT_EQ(scratch.read("a.pgm").size(), 26 + 31 * 17u);
  EXPECT_EQ(scratch.read("a.pgm").substr(0, 26), "P5\n# phase mono\n31 17\n255\n");
  EXPECT_EQ(scratch.vistrel("scene -o b.pgm -s 17x31 --bits 14 --phase bggr").status, 0);
  EXPECT_EQ(scratch.read("b.pgm").size(), 28 + 2 * 31 * 17u);
  EXPECT_EQ(scratch.read("b.pgm").substr(0, 28), "P5\n# phase bggr\n17 31\n16383\n");
  EXPECT_EQ(scratch.vistrel("scene -o c.pgm -s 1x1").status, 0);
}

TEST(Scene, TooLargeIsRejected) {
  const Scratch scratch;
  const Finished result = scratch.vistrel("scene -o a.pgm -s 65536x65536");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "vistrel: frame 65536x65536: it has more than 4294967295 samples\n");
  EXPECT_TRUE(scratch.names().empty());
}

// If two phases have the same filter at a pixel, they have the same sample there. (The frame is too
// small for a title, which would contain the phase.)
TEST(Scene, PhasesLookAtTheSameLight) {
  const Scratch scratch;
  const std::vector<std::string> phases{"rggb", "bggr", "grbg", "gbrg"};
  std::vector<std::string> files;
  for (const std::string& phase : phases) {
    ASSERT_EQ(scratch.vistrel("scene -o a.pgm -s 80x80 --noise 0 --phase " + phase).status, 0);
    files.push_back(scratch.read("a.pgm"));
  }
  int compared = 0;
  for (uint32_t y = 0; y < 80; ++y)
    for (uint32_t x = 0; x < 80; ++x)
      for (size_t a = 0; a < phases.size(); ++a)
        for (size_t b = 0; b < a; ++b)
          if (const uint32_t site = 2 * (y % 2) + x % 2; phases[a][site] == phases[b][site]) {
            ++compared;
            ASSERT_EQ(sampleOf(files[a], 80, 80, x, y), sampleOf(files[b], 80, 80, x, y));
          }
  EXPECT_EQ(compared, 80 * 80);  // half the pixels, green against green, in two pairs of phases
}

TEST(Scene, NoiseHasTheRequestedDeviation) {
  const Scratch scratch;
  constexpr uint32_t kSize = 400;
  const std::string options = "scene -s 400x400 --bits 16 --phase mono -o ";
  ASSERT_EQ(scratch.vistrel(options + "clean.pgm --noise 0").status, 0);
  ASSERT_EQ(scratch.vistrel(options + "noisy.pgm --noise 2").status, 0);
  const std::string clean = scratch.read("clean.pgm"), noisy = scratch.read("noisy.pgm");
  double sum = 0, squares = 0, expected = 0;
  int count = 0;
  for (uint32_t y = 0; y < kSize; ++y) {
    for (uint32_t x = 0; x < kSize; ++x) {
      const double light = sampleOf(clean, kSize, kSize, x, y) / 65535.0;
      if (light < 0.15 || light > 0.85) continue;  // nothing is clipped in this range
      const double error = sampleOf(noisy, kSize, kSize, x, y) / 65535.0 - light;
      sum += error;
      squares += error * error;
      expected += 0.02 * 0.02 * light;
      ++count;
    }
  }
  ASSERT_GT(count, 40000);
  // With this many samples, mean and variance are within a few percent.
  EXPECT_LT(std::abs(sum / count), 0.0005);
  EXPECT_NEAR(squares / expected, 1, 0.03);
}

TEST(Scene, ConvertsToItsColours) {
  const Scratch scratch;
  for (const std::string phase : {"rggb", "bggr", "grbg", "gbrg"}) {
    ASSERT_EQ(scratch.vistrel("scene -o a.pgm -s 600x400 --noise 0 --phase " + phase).status, 0);
    ASSERT_EQ(scratch.vistrel("convert a.pgm -o a.png --phase " + phase).status, 0);
    const Picture picture = readPng(scratch / "a.png");
    const auto colour = [&picture](uint32_t x, uint32_t y) {
      return std::array{picture.at(x, y, 0), picture.at(x, y, 1), picture.at(x, y, 2)};
    };
    // The card of slanted edges: 0.86 of 4095 is 3522, and its highest eight bits are 220.
    EXPECT_EQ(colour(20, 220), (std::array<uint16_t, 3>{220, 220, 220})) << phase;
    EXPECT_EQ(colour(185, 340), (std::array<uint16_t, 3>{243, 168, 71})) << phase;  // orange
    EXPECT_EQ(colour(150, 278), (std::array<uint16_t, 3>{40, 81, 184})) << phase;   // blue
  }
}

}  // namespace
}  // namespace vistrel
