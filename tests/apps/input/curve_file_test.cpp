// Tone curves from files.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

// Entry k is 255 - k / 4.
std::string falling(const std::string& between, int entries = 1024) {
  std::string text;
  for (int k = 0; k < entries; ++k) text += std::to_string(255 - k / (entries / 256)) + between;
  return text;
}

struct Curve : ::testing::Test {
  Scratch scratch;
  Curve() {
    scratch.write("in.pgm", pgm(5, 1, 4095, [](uint32_t x, uint32_t) { return 1000 * x; }));
  }

  Finished convert() const {
    return scratch.vistrel("convert in.pgm --phase mono -o out.pgm --curve curve");
  }
  void expectRejected(const std::string& file, const std::string& text, int status = 2) const {
    scratch.write("curve", file);
    expectFailure(text, status);
  }
  void expectFailure(const std::string& text, int status) const {
    const auto before = scratch.names();
    const Finished result = convert();
    EXPECT_EQ(result.status, status) << text;
    EXPECT_EQ(result.err, "vistrel: --curve curve: " + text + "\n");
    EXPECT_EQ(scratch.names(), before);
  }
};

TEST_F(Curve, MapsByTheHighestTenBits) {
  // 0, 1000, 2000, 3000 and 4000 of 4096 are 0, 250, 500, 750 and 1000 of 1024.
  const std::string expected = "P5\n5 1\n255\n\xFF\xC1\x82\x44\x05";
  for (const std::string& text : {falling("\n"), falling(" "), "# inverse\n" + falling(" # one\n"),
                                  falling("\r\n\t"), falling("\n", 4096)}) {
    scratch.write("curve", text);
    const Finished result = convert();
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(scratch.read("out.pgm"), expected);
  }
  for (const uint32_t maxval : {255u, 65535u}) {
    scratch.write("curve", pgm(64, 16, maxval,
                               [](uint32_t x, uint32_t y) { return 255 - (64 * y + x) / 4; }));
    EXPECT_EQ(convert().err, "");
    EXPECT_EQ(scratch.read("out.pgm"), expected);
  }
}

TEST_F(Curve, FileIsMissing) {
  expectFailure("cannot be read: No such file or directory", 4);
  std::filesystem::create_directory(scratch / "curve");
  expectFailure("it is neither a regular file nor a pipe", 4);
}

TEST_F(Curve, InvalidEntries) {
  expectRejected("# x\n1 2\n3 256 5\n", "line 3: 256: 0 to 255 are allowed");
  expectRejected("1\n99999999999\n", "line 2: 99999999999: 0 to 255 are allowed");
  expectRejected("1\n\n-1\n", "line 3: \"-1\": a number is expected");
  expectRejected("1, 2", "line 1: \"1,\": a number is expected");
  expectRejected("black", "line 1: \"black\": a number is expected");
  expectRejected("1.5", "line 1: \"1.5\": a number is expected");
}

TEST_F(Curve, TooFewOrTooMany) {
  const std::string expected =
      " entries: 1024 are expected, one for each value of ten bits, or "
      "2048 or 4096";
  expectRejected("", "0" + expected);
  expectRejected(falling(" ") + "0", "1025" + expected);
  expectRejected(falling(" ", 256), "256" + expected);
  expectRejected(falling("\n", 4096) + "0", "more than 4096 entries");
}

TEST_F(Curve, InvalidPgm) {
  expectRejected("P5\n1024 1\n255\nabc",
                 "the file is too short: 1024x1 samples of 8 bits do not fit its 17 bytes");
  expectRejected(pgm(1024, 1, 65535, [](uint32_t x, uint32_t) { return x == 7 ? 256 : 0; }),
                 "entry 7: 256: 0 to 255 are allowed");
  expectRejected(pgm(16, 16, 255, [](uint32_t, uint32_t) { return 0; }),
                 "256 entries: 1024 are expected, one for each value of ten bits, or 2048 or 4096");
}

TEST_F(Curve, FrameOfTheWrongDepth) {
  scratch.write("curve", falling("\n", 2048));
  EXPECT_EQ(convert().err,
            "vistrel: in.pgm: --curve curve: 2048 entries: samples of 12 bits take 1024 or 4096\n");
  scratch.write("curve", falling("\n"));
  scratch.write("in.pgm", pgm(4, 4, 16383, [](uint32_t, uint32_t) { return 8000; }));
  const Finished deep = convert();
  EXPECT_EQ(deep.status, 3);
  EXPECT_EQ(deep.err,
            "vistrel: in.pgm: --curve curve: a table requires 10 to 12 bits; the samples have 14; "
            "develop --look has curves for any depth\n");
}

}  // namespace
}  // namespace vistrel
