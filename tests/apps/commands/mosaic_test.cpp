// Raw frames made from pictures.
#include <fmt/format.h>

#include "tests/apps/commands/mosaics.h"

namespace vistrel {
namespace {

TEST(Mosaic, EveryPhaseOfEightBits) {
  const Scratch scratch;
  writePicture<uint8_t>(scratch / "in.png", PNG_FORMAT_RGB);
  for (const std::string phase : {"rggb", "bggr", "grbg", "gbrg"}) {
    EXPECT_EQ(scratch.vistrel("mosaic in.png -o out.pgm --phase " + phase).err, "");
    EXPECT_EQ(scratch.read("out.pgm"), mosaicPgm(phase, 255, 255)) << phase;
  }
}

// In either case, and on standard output.
TEST(Mosaic, NamesOfOutputs) {
  const Scratch scratch;
  writePicture<uint8_t>(scratch / "in.png", PNG_FORMAT_RGB);
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o OUT.PGM").err, "");
  EXPECT_EQ(scratch.read("OUT.PGM"), mosaicPgm("rggb", 255, 255));
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o pgm:-").out, scratch.read("OUT.PGM"));
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o OUT.PGM --pixfmt RGGB").err,
            "vistrel: -o OUT.PGM: --pixfmt writes a headerless raw file, not a .pgm\n");
}

TEST(Mosaic, Depths) {
  const Scratch scratch;
  writePicture<uint8_t>(scratch / "8.png", PNG_FORMAT_RGB);
  writePicture<uint16_t>(scratch / "16.png", PNG_FORMAT_LINEAR_RGB);
  for (const uint32_t bits : {8u, 10u, 13u, 16u}) {
    const std::string options = fmt::format(" -o out.pgm --bits {}", bits);
    EXPECT_EQ(scratch.vistrel("mosaic 8.png" + options).err, "");
    EXPECT_EQ(scratch.read("out.pgm"), mosaicPgm("rggb", 255, (1 << bits) - 1)) << bits;
    EXPECT_EQ(scratch.vistrel("mosaic 16.png" + options).err, "");
    EXPECT_EQ(scratch.read("out.pgm"), mosaicPgm("rggb", 65535, (1 << bits) - 1)) << bits;
  }
}

// A PPM of the picture: 8-bit samples, or big-endian 16-bit ones.
std::string ppm(uint32_t maxval) {
  std::string file = fmt::format("P6\n{} {}\n{}\n", kFrameWidth, kFrameHeight, maxval);
  for (uint32_t y = 0; y < kFrameHeight; ++y)
    for (uint32_t x = 0; x < kFrameWidth; ++x)
      for (uint32_t c = 0; c < 3; ++c) {
        if (maxval > 255) file += static_cast<char>(colourAt(x, y, c, maxval) >> 8);
        file += static_cast<char>(colourAt(x, y, c, maxval));
      }
  return file;
}

TEST(Mosaic, Ppm) {
  const Scratch scratch;
  for (const uint32_t maxval : {255u, 1023u, 65535u}) {
    scratch.write("in.ppm", ppm(maxval));
    EXPECT_EQ(scratch.vistrel("mosaic in.ppm -o out.pgm --phase gbrg").err, "");
    EXPECT_EQ(scratch.read("out.pgm"), mosaicPgm("gbrg", maxval, maxval));
    EXPECT_EQ(scratch.vistrel("mosaic in.ppm -o out.pgm --bits 12").err, "");
    EXPECT_EQ(scratch.read("out.pgm"), mosaicPgm("rggb", maxval, 4095));
  }
  scratch.write("in.ppm", "P6 1 1 200\nab\xC9");
  EXPECT_EQ(scratch.vistrel("mosaic in.ppm -o out.pgm").err,
            "vistrel: in.ppm: a sample is above the maxval of 200\n");
  scratch.write("in.ppm", "P6 2 1 255\nabcde");
  EXPECT_EQ(scratch.vistrel("mosaic in.ppm -o out.pgm").err,
            "vistrel: in.ppm: the file is too short: 2x1 pixels do not fit its 16 bytes\n");
}

TEST(Mosaic, Errors) {
  const Scratch scratch;
  writePicture<uint8_t>(scratch / "in.png", PNG_FORMAT_RGB);
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o in.png").status, 2);
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o out.pgm --phase mono").status, 2);
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o out.raw --pixfmt GREY").status, 2);
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o out.pgm --pixfmt RGGB").status, 2);
  EXPECT_EQ(scratch.vistrel("mosaic in.png -o out.raw --pixfmt RGGB --bits 8").status, 2);
  EXPECT_EQ(scratch.vistrel("mosaic none.png -o out.pgm").status, 4);
  scratch.write("gray.pgm", "P5 1 1 255\n.");
  const Finished gray = scratch.vistrel("mosaic gray.pgm -o out.pgm");
  EXPECT_EQ(gray.status, 3);
  EXPECT_EQ(gray.err, "vistrel: gray.pgm: it is neither a PPM nor a PNG\n");
  EXPECT_EQ(scratch.names(), (std::vector<std::string>{"gray.pgm", "in.png"}));
}

}  // namespace
}  // namespace vistrel
