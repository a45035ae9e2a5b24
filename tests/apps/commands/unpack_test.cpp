// Headerless raw files unpacked.
#include <fmt/format.h>

#include "tests/apps/commands/mosaics.h"

namespace vistrel {
namespace {

// Bytes by the definitions of the packings, of the 12-bit samples 0x123, 0x456 and the 10-bit ones
// 0x155, 0x2AA, 0x0F3, 0x30C, and the 14-bit ones 0x1555, 0x2AAA, 0x00FF, 0x3F00.
TEST(Unpack, BytesOfTheDefinitions) {
  const struct {
    const char* name;
    const char* phase;
    uint32_t bits;
    std::string bytes;
    std::vector<uint32_t> samples;
  } cases[] = {
      {"BayerRG12p", "rggb", 12, "\x23\x61\x45", {0x123, 0x456}},
      {"BayerRG12Packed", "rggb", 12, "\x12\x63\x45", {0x123, 0x456}},
      {"pRCC", "rggb", 12, "\x12\x45\x63", {0x123, 0x456}},
      {"RG12", "rggb", 12, "\x23\x01\x56\x04", {0x123, 0x456}},
      {"rggb12be", "rggb", 12, "\x01\x23\x04\x56", {0x123, 0x456}},
      {"BayerRG10p", "rggb", 10, "\x55\xA9\x3A\x0F\xC3", {0x155, 0x2AA, 0x0F3, 0x30C}},
      {"BayerRG10Packed", "rggb", 10, "\x55\x21\xAA\x3C\x03\xC3", {0x155, 0x2AA, 0x0F3, 0x30C}},
      {"pRAA", "rggb", 10, "\x55\xAA\x3C\xC3\x39", {0x155, 0x2AA, 0x0F3, 0x30C}},
      {"RAW10", "", 10, "\x55\xAA\x3C\xC3\x39", {0x155, 0x2AA, 0x0F3, 0x30C}},
      {"BayerRG14p",
       "rggb",
       14,
       std::string("\x55\x95\xAA\xFA\x0F\0\xFC", 7),
       {0x1555, 0x2AAA, 0xFF, 0x3F00}},
      {"BA81", "bggr", 8, "\x7F\xFF", {0x7F, 0xFF}},
  };
  const Scratch scratch;
  for (const auto& c : cases) {
    scratch.write("in.raw", c.bytes);
    const auto width = static_cast<uint32_t>(c.samples.size());
    const Finished result =
        scratch.vistrel(fmt::format("unpack in.raw -s {}x1 --pixfmt {} -o out.pgm", width, c.name));
    EXPECT_EQ(result.err, "") << c.name;
    const uint32_t maxval = (1u << c.bits) - 1;
    EXPECT_EQ(scratch.read("out.pgm"),
              pgm(
                  width, 1, maxval, [&](uint32_t x, uint32_t) { return c.samples[x]; }, c.phase))
        << c.name;
  }
}

// Seven columns: in every packing a row ends with an incomplete group.
TEST(Unpack, WhatMosaicPacks) {
  const Scratch scratch;
  writePicture<uint16_t>(scratch / "in.png", PNG_FORMAT_LINEAR_RGB);
  const struct {
    const char* name;
    const char* phase;
    int bits;
  } cases[] = {{"BayerGR8", "grbg", 8},
               {"BG10", "bggr", 10},
               {"gbrg14be", "gbrg", 14},
               {"BYR2", "bggr", 16},
               {"BayerRG10p", "rggb", 10},
               {"BayerGB12p", "gbrg", 12},
               {"BayerBG14p", "bggr", 14},
               {"BayerGR10Packed", "grbg", 10},
               {"BayerBG12Packed", "bggr", 12},
               {"pgAA", "grbg", 10},
               {"pGCC", "gbrg", 12},
               {"pREE", "rggb", 14}};
  for (const auto& c : cases) {
    const std::string format = std::string(" --pixfmt ") + c.name;
    EXPECT_EQ(scratch.vistrel("mosaic in.png -o in.raw" + format).err, "");
    EXPECT_EQ(scratch.vistrel("unpack in.raw -s 7x5 -o out.pgm" + format).err, "");
    EXPECT_EQ(scratch.read("out.pgm"), mosaicPgm(c.phase, 65535, (1 << c.bits) - 1)) << c.name;
  }
}

// Only the command line can say the phase.
TEST(Unpack, NamesThatLeaveThePhaseOpen) {
  const Scratch scratch;
  scratch.write("in.raw", "\x55\xAA\x3C\xC3\x39\xAA\x55\xC3\x3C\x93");
  const std::string convert = "convert in.raw -s 4x2 -o ";
  const Finished open = scratch.vistrel(convert + "open.ppm --pixfmt RAW10");
  EXPECT_EQ(open.status, 3);
  EXPECT_NE(open.err.find("--phase"), std::string::npos) << open.err;
  EXPECT_EQ(scratch.vistrel(convert + "a.ppm --pixfmt RAW10 --phase rggb").err, "");
  EXPECT_EQ(scratch.vistrel(convert + "b.ppm --pixfmt SRGGB10P").err, "");
  EXPECT_EQ(scratch.read("a.ppm"), scratch.read("b.ppm"));
  writePicture<uint16_t>(scratch / "in.png", PNG_FORMAT_LINEAR_RGB);
  const Finished mosaic = scratch.vistrel("mosaic in.png -o out.raw --pixfmt raw10");
  EXPECT_EQ(mosaic.status, 2);
  EXPECT_EQ(mosaic.err,
            "vistrel: --pixfmt RAW10: its name leaves the phase open; SRGGB10P names one\n");
}

TEST(Unpack, SixteenBitRaw) {
  const Scratch scratch;
  scratch.write("in.raw", "\x12\x63\x45");
  EXPECT_EQ(scratch.vistrel("unpack in.raw -s 2x1 --pixfmt Mono12Packed -o out.raw").err, "");
  EXPECT_EQ(scratch.read("out.raw"), std::string("\x23\x01\x56\x04"));
}

TEST(Unpack, Places) {
  const Scratch scratch;
  scratch.write("in.raw", "--ab..cd..ef..gh..");
  EXPECT_EQ(scratch
                .vistrel("unpack in.raw -s 2x2 --pixfmt GREY --skip 2 --stride 4 --frame 1 "
                         "-o out.raw")
                .err,
            "");
  EXPECT_EQ(scratch.read("out.raw"), "efgh");
}

TEST(Unpack, EveryFrameOfAFile) {
  const Scratch scratch;
  scratch.write("in.raw", "abcdefgh?");  // two frames and a byte
  const std::string unpack = "unpack in.raw -s 2x2 --pixfmt GREY -o ";
  const std::string first = "P5\n# phase mono\n2 2\n255\nabcd";
  const std::string second = "P5\n# phase mono\n2 2\n255\nefgh";
  EXPECT_EQ(scratch.vistrel(unpack + "out.pgm").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), first + second);
  EXPECT_EQ(scratch.vistrel(unpack + "-").out, first + second);
  EXPECT_EQ(scratch.vistrel(unpack + "out.raw").status, 0);
  EXPECT_EQ(scratch.read("out.raw"), "abcdefgh");
  EXPECT_EQ(scratch.vistrel(unpack + "out.pgm --frame 1").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), second);
  const Finished png = scratch.vistrel(unpack + "out.png");
  EXPECT_EQ(png.status, 3);
  EXPECT_EQ(png.err,
            "vistrel: in.raw: 1 byte after the last frame is ignored\n"
            "vistrel: in.raw: it has 2 frames: out.png takes one, .pgm and .raw take all; --frame "
            "N selects one\n");
  EXPECT_EQ(scratch.vistrel(unpack + "out.png --frame 0").status, 0);
}

// Rows of 36 bits: 0x123, 0x456, 0x789 and 0xABC, 0xDEF, 0x012, then other samples.
TEST(Unpack, ContinuousRows) {
  const Scratch scratch;
  scratch.write("in.raw", "\x23\x61\x45\x89\xC7\xAB\xEF\x2D\x01" + std::string(9, 'x'));
  const std::string unpack = "unpack in.raw -s 3x2 --pixfmt BayerRG12p -o out.pgm --continuous";
  EXPECT_EQ(scratch.vistrel(unpack + " --frame 0").err, "");
  const uint32_t samples[] = {0x123, 0x456, 0x789, 0xABC, 0xDEF, 0x012};
  const std::string expected = pgm(
      3, 2, 4095, [&](uint32_t x, uint32_t y) { return samples[3 * y + x]; }, "rggb");
  EXPECT_EQ(scratch.read("out.pgm"), expected);
  EXPECT_EQ(scratch.vistrel(unpack).err, "");  // both frames
  EXPECT_EQ(scratch.read("out.pgm").substr(0, expected.size()), expected);
  EXPECT_EQ(scratch.read("out.pgm").size(), 2 * expected.size());
  EXPECT_EQ(scratch.vistrel(unpack + " --stride 5").status, 2);
}

TEST(Unpack, Errors) {
  const Scratch scratch;
  scratch.write("in.raw", "abcdef");
  const std::string unpack = "unpack in.raw -o out.pgm ";
  EXPECT_EQ(scratch.vistrel(unpack + "-s 2x2 --pixfmt GREY").status, 0);
  std::filesystem::remove(scratch / "out.pgm");
  EXPECT_EQ(scratch.vistrel(unpack + "-s 2x2 --pixfmt none").status, 2);
  EXPECT_EQ(scratch.vistrel(unpack + "-s 2x2").status, 2);
  EXPECT_EQ(scratch.vistrel(unpack).status, 3);
  EXPECT_EQ(scratch.vistrel("unpack in.raw -o out.tif -s 2x2 --pixfmt GREY").status, 2);
  EXPECT_EQ(scratch.vistrel("unpack in.raw -o out.ppm -s 2x2 --pixfmt GREY").status, 2);
  EXPECT_EQ(scratch.vistrel("unpack none.raw -o out.pgm -s 2x2 --pixfmt GREY").status, 4);
  const Finished cut = scratch.vistrel(unpack + "-s 2x2 --pixfmt Y16");
  EXPECT_EQ(cut.status, 3);
  EXPECT_NE(cut.err.find("in.raw: the file is too short"), std::string::npos) << cut.err;
  EXPECT_EQ(scratch.vistrel(unpack + "-s 2x2 --pixfmt GREY --frame 1").status, 3);
  EXPECT_EQ(scratch.vistrel(unpack + "-s 2x2 --pixfmt GREY --frame 18446744073709551615").status,
            3);
  EXPECT_EQ(scratch.vistrel(unpack + "-s 2x2 --pixfmt GREY --stride 1").status, 3);
  // 'b' << 8 | 'a' has more than ten bits.
  const Finished excess = scratch.vistrel(unpack + "-s 1x1 --pixfmt Y10");
  EXPECT_EQ(excess.status, 3);
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.raw"});
}

}  // namespace
}  // namespace vistrel
