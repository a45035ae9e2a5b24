#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct PgmReader : InputTest {};

TEST_F(PgmReader, StreamOfPgms) {
  scratch.write("in.pgm", flat(10, 1023) + flat(600, 1023) + flat(30, 1023) + "\n");
  const std::string said = "vistrel: in.pgm: 1 byte after the last frame is ignored\n";
  EXPECT_EQ(info("in.pgm", said)["frames"], 3);
  EXPECT_EQ(info("in.pgm", said)["trailing_bytes"], 1);
  EXPECT_EQ(info("in.pgm", said)["max"], 10);
  EXPECT_EQ(info("in.pgm --frame 1", said)["max"], 600);
  EXPECT_EQ(info("in.pgm --frame 2", said)["mean"], 30);
}

TEST_F(PgmReader, PlainPgm) {
  scratch.write("in.pgm", "P2 # a\n3 2 1000\n0 1 2#b\n 1000\n\n17 999\n# the end\n");
  const auto sample = [](uint32_t x, uint32_t y) {
    const uint32_t samples[2][3] = {{0, 1, 2}, {1000, 17, 999}};
    return samples[y][x];
  };
  expectSamples("in.pgm", 3, 2, 16, sample);
  const auto description = info("in.pgm --bits 10");
  EXPECT_EQ(description["format"], "PGM");
  EXPECT_EQ(description["maxval"], 1000);
  scratch.write("in.pgm", "P2 2 2 255 10 20 30 255");
  expectSamples("in.pgm", 2, 2, 8,
                [](uint32_t x, uint32_t y) { return x + y == 2 ? 255 : 10 + 10 * x + 20 * y; });
  scratch.write("in.pgm", "P2 2 1 255 10 20 30 ");
  EXPECT_EQ(info("in.pgm", "vistrel: in.pgm: 3 bytes after the last frame are ignored\n")["max"],
            20);
}

TEST_F(PgmReader, GrayPam) {
  const std::string head = "P7\nWIDTH 2\nHEIGHT 2\nDEPTH 1\nMAXVAL ";
  const std::string image =
      head + "4095\nTUPLTYPE GRAYSCALE\nENDHDR\n" + std::string("\x0F\xFF\0\1\0\2\1\0", 8);
  scratch.write("in.pam", image);
  expectSamples("in.pam", 2, 2, 12, [](uint32_t x, uint32_t y) {
    const uint32_t samples[2][2] = {{4095, 1}, {2, 256}};
    return samples[y][x];
  });
  EXPECT_EQ(info("in.pam")["format"], "PAM");
  scratch.write("in.pam", image + image + image);
  EXPECT_EQ(info("in.pam")["frames"], 3);
  scratch.write("in.pam", head + "255\nENDHDR\nabcd");
  EXPECT_EQ(info("in.pam")["max"], 'd');
  scratch.write("own.pgm", flat(77));
  ASSERT_EQ(scratch.vistrel("convert own.pgm --phase mono -o own.pam").err, "");
  EXPECT_EQ(info("own.pam")["max"], 77);
}

TEST_F(PgmReader, SamplesAboveTheMaxval) {
  const auto errorOf = [this](const std::string& options) {
    const Finished result = scratch.vistrel("convert in.pgm --phase mono -o out.png" + options);
    EXPECT_EQ(result.status, result.err.empty() ? 0 : 3);
    return result.err;
  };
  scratch.write("in.pgm",
                pgm(3, 2, 100, [](auto x, auto y) { return x == 1 && y == 1 ? 255 : 7; }));
  EXPECT_EQ(errorOf(""),
            "vistrel: in.pgm: sample 255 at column 1, row 1: the maxval is 100; with --bits it is "
            "ignored\n");
  EXPECT_EQ(errorOf(" --bits 8"), "");
  scratch.write("in.pgm", pgm(2, 1, 5000, [](auto x, auto) { return 5000 + x; }));
  EXPECT_EQ(errorOf(""),
            "vistrel: in.pgm: sample 5001 at column 1, row 0: the maxval is 5000; with --bits it "
            "is ignored\n");
  scratch.write("in.pgm", flat(1023, 1023));
  EXPECT_EQ(errorOf(""), "");
  scratch.write("in.pgm", flat(1024, 1023));
  EXPECT_EQ(errorOf(""),
            "vistrel: in.pgm: sample 1024 at column 0, row 0: samples of 10 bits are at most 1023; "
            "the file says that 10 bits are significant, --bits overrides it\n");
}

}  // namespace
}  // namespace vistrel
