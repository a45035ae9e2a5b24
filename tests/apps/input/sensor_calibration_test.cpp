// Dark frames, flat fields and hot pixels in files, through the program.
#include <gtest/gtest.h>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

using Row = std::vector<uint32_t>;

std::string rowPgm(const Row& row) {
  return pgm(uint32_t(row.size()), 1, 255, [&row](uint32_t x, uint32_t) { return row[x]; });
}

struct SensorCalibration : ::testing::Test {
  void SetUp() override {
    scratch.write("in.pgm", rowPgm({100, 60, 255, 80}));
    scratch.write("dark.pgm", rowPgm({10, 0, 5, 90}));
    scratch.write("flat.pgm", rowPgm({100, 50, 50, 100}));
  }

  void expect(const std::string& options, const Row& row) {
    const Finished result = scratch.vistrel("convert in.pgm --phase mono -o out.pgm " + options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(scratch.read("out.pgm"), rowPgm(row)) << options;
  }
  void expectRejected(const std::string& options, int status, const std::string& text) {
    const Finished result = scratch.vistrel("convert in.pgm --phase mono -o bad.pgm " + options);
    EXPECT_EQ(result.status, status);
    EXPECT_NE(result.err.find(text), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find("bad.pgm: it"), std::string::npos);
    for (const std::string& name : scratch.names()) EXPECT_NE(name, "bad.pgm");
  }

  const Scratch scratch;
};

TEST_F(SensorCalibration, DarkIsSubtracted) { expect("--dark dark.pgm", {90, 60, 250, 0}); }

// The means are 75 at even and at odd columns: gains of 0.75, 1.5, 1.5, 0.75.
TEST_F(SensorCalibration, FlatIsEvenedOut) { expect("--flat flat.pgm", {75, 90, 255, 60}); }

// The flat field without dark: 90, 50, 45, 10, with means of 67.5 and 30.
TEST_F(SensorCalibration, DarkIsSubtractedFromTheFlatFieldToo) {
  // 90 * .75, 60 * .6, 250 * 1.5, 0
  expect("--dark dark.pgm --flat flat.pgm", {68, 36, 255, 0});
}

TEST_F(SensorCalibration, HotPixelsAreReplaced) {
  scratch.write("hot.txt", "# column row\n2 0   # bright\n\n2 0\n");
  expect("--hot hot.txt", {100, 60, 70, 80});
}

TEST_F(SensorCalibration, RejectsWhatIsNotForTheFrame) {
  scratch.write("small.pgm", rowPgm({1, 2, 3}));
  scratch.write("far.txt", "4 0\n");
  scratch.write("words.txt", "1 0\none two\n");
  const std::string pixels = ": it has 3x1 pixels; this frame has 4x1\n";
  expectRejected("--dark small.pgm", 3, "--dark small.pgm" + pixels);
  expectRejected("--flat small.pgm", 3, "--flat small.pgm" + pixels);
  expectRejected("--hot far.txt", 3, "--hot far.txt: pixel 4 0 lies outside the frame of 4x1\n");
  expectRejected("--hot words.txt", 2,
                 "--hot words.txt: line 2: \"one two\": a column and a row, counted from 0, are "
                 "expected\n");
  expectRejected("--hot none.txt", 4, "--hot none.txt: it cannot be read\n");
  expectRejected("--dark none.pgm", 4, "--dark none.pgm: ");
  expectRejected("--dark dark.pgm --flat small.pgm", 3, "--dark dark.pgm: it has 4x1 pixels");
}

// Levels of other bits are on another scale; another phase means another part of the sensor.
TEST_F(SensorCalibration, RejectsOtherBitsAndPhases) {
  scratch.write("deep.pgm", pgm(4, 1, 4095, [](uint32_t, uint32_t) { return 160u; }));
  expectRejected("--dark deep.pgm", 3, "--dark deep.pgm: it has 12 bits; this frame has 8\n");
  expect("--flat deep.pgm", {100, 60, 255, 80});  // gains have no scale
  expectRejected("--dark deep.pgm --flat flat.pgm", 3,
                 "--flat flat.pgm: --dark deep.pgm: it has 12 bits; this frame has 8\n");
  for (const std::string phase : {"rggb", "grbg"})
    scratch.vistrel("scene --camera -s 16x12 --phase " + phase + " -o " + phase + ".dng");
  for (const std::string option : {"--dark", "--flat"}) {
    const Finished result = scratch.vistrel("convert rggb.dng -o out.png " + option + " grbg.dng");
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(
        result.err.find(option + " grbg.dng: its phase is grbg; that of this frame is rggb\n"),
        std::string::npos)
        << result.err;
  }
}

TEST_F(SensorCalibration, WarnsOfFlatFieldsWithoutLight) {
  const auto warningOf = [&](const Row& flat, const std::string& options) {
    scratch.write("flat.pgm", rowPgm(flat));
    const Finished result =
        scratch.vistrel("convert in.pgm --phase mono -o out.pgm --flat flat.pgm " + options);
    EXPECT_EQ(result.status, 0);
    return result.err;
  };
  EXPECT_EQ(warningOf({100, 50, 50, 100}, ""), "");
  EXPECT_EQ(warningOf({0, 0, 0, 0}, ""),
            "vistrel: --flat flat.pgm: no pixel has light above black; it changes nothing\n");
  EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm"));
  const std::string some =
      "vistrel: --flat flat.pgm: 2 of 4 pixels have no light above black, so no gain evens them "
      "out\n";
  EXPECT_EQ(warningOf({100, 0, 0, 100}, ""), some);
  EXPECT_EQ(warningOf({10, 50, 50, 90}, "--dark dark.pgm"), some);
}

// --from-name is for the frames.
TEST_F(SensorCalibration, ItsNameSaysNothing) {
  scratch.write("in_8b_mono.pgm", scratch.read("in.pgm"));
  for (const std::string name : {"dark.pgm", "dark_8b.pgm", "dark_10b_rggb.pgm"}) {
    scratch.write(name, scratch.read("dark.pgm"));
    const Finished result =
        scratch.vistrel("convert in_8b_mono.pgm --from-name --dark " + name + " -o out.pgm");
    EXPECT_EQ(result.err, "") << name;
    EXPECT_EQ(scratch.read("out.pgm"), rowPgm({90, 60, 250, 0})) << name;
  }
  scratch.write("in_8b_mono.raw", "abcd");
  const Finished headerless =
      scratch.vistrel("convert in_8b_mono.raw -s 4x1 --from-name --dark in_8b_mono.raw -o out.pgm");
  EXPECT_EQ(headerless.status, 2);
  EXPECT_EQ(headerless.err,
            "vistrel: --dark in_8b_mono.raw: --bits is missing: a headerless raw file does not "
            "specify its depth\n");
}

// A calibration is never overwritten.
TEST_F(SensorCalibration, IsAnInput) {
  const Finished result =
      scratch.vistrel("convert in.pgm --phase mono --dark dark.pgm -o dark.pgm");
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("--dark"), std::string::npos) << result.err;
}

}  // namespace
}  // namespace vistrel
