// The contact sheet.
#include <gtest/gtest.h>

#include <tiffio.h>

#include <algorithm>

#include "tests/apps/input/tiff_file.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

uint32_t sampleAt(uint32_t x, uint32_t y) { return (x * x * 3 + 7 * x * y + (x ^ y) * 29) % 256; }

// How often `small`, magnified by `zoom`, occurs in `large`.
int timesIn(const Picture& large, const Picture& small, uint32_t zoom) {
  const auto lies = [&](uint32_t left, uint32_t top) {
    for (uint32_t y = 0; y < small.height * zoom; ++y)
      for (uint32_t x = 0; x < small.width * zoom; ++x)
        for (uint32_t c = 0; c < 3; ++c)
          if (large.at(left + x, top + y, c) != small.at(x / zoom, y / zoom, c)) return false;
    return true;
  };
  int times = 0;
  for (uint32_t y = 0; y + small.height * zoom <= large.height; ++y)
    for (uint32_t x = 0; x + small.width * zoom <= large.width; ++x) times += lies(x, y);
  return times;
}

Picture part(const Picture& from, uint32_t left, uint32_t top, uint32_t width, uint32_t height) {
  Picture p{width, height, 3, 8, 0, {}};
  for (uint32_t y = 0; y < height; ++y)
    for (uint32_t x = 0; x < width; ++x)
      for (uint32_t c = 0; c < 3; ++c) p.samples.push_back(from.at(left + x, top + y, c));
  return p;
}

struct Compare : ::testing::Test {
  Scratch scratch;

  Picture sheet(const std::string& options) const {
    const Finished result = scratch.vistrel("compare in.pgm --phase rggb -o out.png " + options);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return readPng(scratch / "out.png");
  }
  void expectFailure(const std::string& options, int status, const std::string& text) const {
    const auto before = scratch.names();
    const Finished result = scratch.vistrel("compare in.pgm " + options);
    EXPECT_EQ(result.status, status) << options;
    EXPECT_EQ(result.err, "vistrel: " + text + "\n");
    EXPECT_EQ(scratch.names(), before);
  }
};

// The crop is part of the whole frame's conversion: it has no border effects.
TEST_F(Compare, ShowsTheCropOnceForEachAlgorithm) {
  scratch.write("in.pgm", pgm(90, 70, 255, sampleAt));
  const Picture all = sheet("--crop 12x9+40+31 --zoom 2");
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    ASSERT_EQ(
        scratch.vistrel(std::string("convert in.pgm --phase rggb -o one.png -a ") + a->name).status,
        0);
    EXPECT_EQ(timesIn(all, part(readPng(scratch / "one.png"), 40, 31, 12, 9), 2), 1) << a->name;
  }
  const Picture two = sheet("--crop 12x9+40+31 --zoom 2 -a bilinear -a bilinear");
  ASSERT_EQ(scratch.vistrel("convert in.pgm --phase rggb -o one.png").status, 0);
  EXPECT_EQ(timesIn(two, part(readPng(scratch / "one.png"), 40, 31, 12, 9), 2), 2);
}

TEST_F(Compare, TakesTheMiddleOfTheFrame) {
  scratch.write("in.pgm", pgm(140, 98, 255, sampleAt));
  ASSERT_EQ(scratch.vistrel("convert in.pgm --phase rggb -o one.png").status, 0);
  EXPECT_EQ(
      timesIn(sheet("-a bilinear --zoom 1"), part(readPng(scratch / "one.png"), 10, 4, 120, 90), 1),
      1);
}

TEST_F(Compare, HasABlockForEachFrame) {
  scratch.write("in.pgm", pgm(40, 30, 255, sampleAt));
  scratch.write("b.pgm", pgm(40, 30, 4095, [](auto x, auto y) { return sampleAt(x, y) * 16; }));
  const uint32_t one = sheet("").height;
  EXPECT_GT(sheet("b.pgm").height, 2 * one - 20);
}

TEST_F(Compare, ReducesFramesWithTooManyBits) {
  scratch.write("in.pgm", pgm(40, 30, 4095, [](auto x, auto y) { return sampleAt(x, y) * 16; }));
  const Picture all = sheet("--zoom 1 -a laroche");
  ASSERT_EQ(
      scratch.vistrel("convert in.pgm --phase rggb -o one.png -a laroche --depth reduce10").status,
      0);
  EXPECT_EQ(timesIn(all, readPng(scratch / "one.png"), 1), 1);
}

TEST_F(Compare, WarnsIfOptionsContradictTheFile) {
  scratch.write("in.pgm", pgm(40, 30, 1023, sampleAt));
  const Finished result =
      scratch.vistrel("compare in.pgm --phase rggb --bits 12 -a bilinear -o out.png");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "vistrel: in.pgm: using 12 bits; the file says 10\n");
}

// In words that develop takes, and decides itself.
TEST_F(Compare, PrintsTheLook) {
  scratch.write("in.pgm", pgm(40, 30, 255, sampleAt));
  const Finished sheet = scratch.vistrel("compare in.pgm --phase rggb --look auto -o sheet.png");
  EXPECT_EQ(sheet.status, 0) << sheet.err;
  const std::string line = scratch.vistrel("develop in.pgm --phase rggb -o out.png").out;
  const size_t at = line.find("--look");
  EXPECT_EQ(sheet.out, "in.pgm: " + line.substr(at, line.find(" -o ") - at) + "\n");
}

// The dark half outside the file's crop counts for nothing, and the picture is turned.
TEST_F(Compare, ShowsWhatDevelopMakesOfTheFile) {
  TiffSpec spec;
  spec.width = 64, spec.height = 48;
  spec.cfa = {0, 1, 1, 2};
  spec.isDng = true;
  spec.frame.pairs = {{TIFFTAG_DEFAULTCROPORIGIN, {32, 6}}, {TIFFTAG_DEFAULTCROPSIZE, {30, 40}}};
  for (uint16_t orientation = 1; orientation <= 8; ++orientation) {
    spec.orientation = orientation;
    writeTiff(scratch / "in.dng", spec,
              [](uint32_t x, uint32_t y) { return x < 32 ? 20 : 200 + 9 * sampleAt(x, y); });
    for (const std::string algorithm : {"ahd", "directional", "laroche"}) {
      const std::string options = " --look auto -a " + algorithm;
      const Finished made = scratch.vistrel("compare in.dng -o sheet.png --zoom 2" + options);
      ASSERT_EQ(made.status, 0) << made.err;
      ASSERT_EQ(scratch.vistrel("develop in.dng -o one.png" + options).status, 0);
      EXPECT_EQ(timesIn(readPng(scratch / "sheet.png"), readPng(scratch / "one.png"), 2), 1)
          << orientation << ' ' << algorithm;
      const std::string crop = " --crop 9x7+40+11";
      ASSERT_EQ(scratch.vistrel("compare in.dng -o sheet.png --zoom 1" + options + crop).status, 0);
      ASSERT_EQ(scratch
                    .vistrel("develop in.dng -o one.png --roi 9x7+40+11 " + made.out.substr(8) +
                             " -a " + algorithm)
                    .status,
                0);
      EXPECT_EQ(timesIn(readPng(scratch / "sheet.png"), readPng(scratch / "one.png"), 1), 1)
          << orientation << ' ' << algorithm << crop;
    }
  }
}

TEST_F(Compare, PrintsNoLookOfASheetThatCannotBeWritten) {
  scratch.write("in.pgm", pgm(40, 30, 255, sampleAt));
  const Finished result =
      scratch.vistrel("compare in.pgm --phase rggb --look auto -o missing/sheet.png");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.out, "");
}

TEST_F(Compare, Errors) {
  scratch.write("in.pgm", pgm(40, 30, 255, sampleAt));
  expectFailure("--phase rggb -o out.pgm", 2, "-o out.pgm: a sheet is a .png or .ppm");
  expectFailure(
      "--phase mono -o out.png", 3,
      "in.pgm: a mono frame cannot be demosaiced; --phase names one of the four Bayer phases");
  expectFailure("--phase rggb -o out.png --crop 10x10+31+0", 3,
                "in.pgm: --crop 10x10+31+0: it extends beyond the frame of 40x30");
  expectFailure("--phase rggb -o out.png --crop 0x10+0+0", 3,
                "in.pgm: --crop 0x10+0+0: it is empty");
  expectFailure("--phase rggb -o out.png --curve 2", 3,
                "in.pgm: --curve 2: it needs 10 bits or more; the samples have 8; develop --look "
                "has curves for any depth");
  scratch.write("in.ppm", pgm(40, 30, 255, sampleAt));
  EXPECT_EQ(scratch.vistrel("compare in.ppm --phase rggb -o in.ppm").err,
            "vistrel: -o in.ppm: it is the same file as the input in.ppm\n");
}

TEST_F(Compare, SheetThatIsTooLarge) {
  scratch.write("in.pgm", pgm(3000, 600, 255, sampleAt));
  const Finished result =
      scratch.vistrel("compare in.pgm --phase rggb -o out.png --crop 3000x600+0+0 --zoom 16");
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("268435456 are allowed; use a smaller --crop or --zoom\n"),
            std::string::npos)
      << result.err;
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.pgm"});
}

}  // namespace
}  // namespace vistrel
