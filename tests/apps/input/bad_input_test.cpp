// Invalid input.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

const std::string kUnknown =
    "unknown kind of frame; --size WxH reads headerless raw files, and `vistrel guess` finds their "
    "size and format";

uint32_t plain(uint32_t, uint32_t) { return 100; }

struct BadInput : ::testing::Test {
  Scratch scratch;

  // The program names the file and the reason, ends with the right status and leaves no file.
  void expect(int status, const std::string& text, const std::string& options) const {
    const auto before = scratch.names();
    const Finished result = scratch.vistrel("convert in.pgm -o out.png " + options);
    EXPECT_EQ(result.status, status) << text;
    EXPECT_EQ(result.err, "vistrel: in.pgm: " + text + "\n");
    EXPECT_EQ(scratch.names(), before);
  }
  void expectRejected(const std::string& file, const std::string& text,
                      const std::string& options = "--phase mono") const {
    scratch.write("in.pgm", file);
    expect(3, text, options);
  }
};

TEST_F(BadInput, MissingFile) {
  expect(4, "cannot be read: No such file or directory", "--phase mono");
}

TEST_F(BadInput, Folder) {
  std::filesystem::create_directory(scratch / "in.pgm");
  expect(3, "there is no frame in this folder", "--phase mono");
}

TEST_F(BadInput, FileTruncatedAnywhere) {
  //                     0   3          13     19   23
  const std::string header("P5\n# comment\n40 30\n255\n");
  const std::string file = header + std::string(40 * 30, 'x');
  const auto expected = [](size_t size) -> std::string {
    if (size == 0) return "the file is empty";
    if (size == 1) return kUnknown;
    if (size <= 13) return "the file ends before the width";
    if (size <= 15) return "the file ends with the width";
    if (size <= 16) return "the file ends before the height";
    if (size <= 18) return "the file ends with the height";
    if (size <= 19) return "the file ends before the maxval";
    if (size <= 22) return "the file ends with the maxval";
    return "the file is too short: 40x30 samples of 8 bits do not fit its " + std::to_string(size) +
           " bytes";
  };
  for (size_t size = 0; size < 64; ++size) expectRejected(file.substr(0, size), expected(size));
  for (const size_t size : {header.size() + 600, file.size() - 1})
    expectRejected(file.substr(0, size), expected(size));
  scratch.write("in.pgm", file);
  EXPECT_EQ(scratch.vistrel("convert in.pgm -o out.png --phase mono").status, 0);
}

TEST_F(BadInput, StreamOfImages) {
  const std::string first = pgm(4, 4, 255, plain);
  expectRejected(first + pgm(4, 5, 255, plain),
                 "image 1 of the stream is 4x5 with maxval 255: all have to be like the first one, "
                 "4x4 with maxval 255");
  expectRejected(
      first + first + pgm(4, 4, 1023, plain),
      "image 2 of the stream is 4x4 with maxval 1023: all have to be like the first one, "
      "4x4 with maxval 255");
  expectRejected(first + first.substr(0, 26),
                 "the file is too short: it ends within image 1 of the stream");
  expectRejected(first + "P5 4", "the file ends with the width");
  expectRejected(first + first, "--frame 2: the file has 2 frames, counted from 0",
                 "--phase mono --frame 2");
}

TEST_F(BadInput, SixteenBitFileTruncatedInASample) {
  const std::string file = pgm(5, 4, 4095, plain);
  expectRejected(file.substr(0, file.size() - 1),
                 "the file is too short: 5x4 samples of 16 bits do not fit its 51 bytes");
}

TEST_F(BadInput, OtherFormats) {
  const std::string allowed =
      "; of the PNM family this program reads PGM, P2 and P5, and gray PAM, P7";
  expectRejected("P6\n2 2\n255\n", "its type is P6" + allowed);
  expectRejected("P4\n2 2\n1 2 3 4\n", "its type is P4" + allowed);
  expectRejected("GIF89a", kUnknown);
}

TEST_F(BadInput, Maxval) {
  expectRejected("P5\n2 2\n0\nabcd", "maxval 0: 1 to 65535 are allowed");
  expectRejected("P5\n2 2\n65536\nabcd", "maxval 65536: 1 to 65535 are allowed");
  expectRejected("P5\n2 2\n70000\nabcd", "maxval 70000: 1 to 65535 are allowed");
  expectRejected("P5\n2 2\n99999999999\nabcd", "maxval 99999999999: 1 to 65535 are allowed");
  expectRejected("P5\n2 2\nwhite\nabcd", "maxval \"white\": a number is expected");
  expectRejected("P5\n2 2\n255x\nabcd", "maxval \"255x\": a number is expected");
  expectRejected("P5\n2 2\n-1\nabcd", "maxval \"-1\": a number is expected");
}

TEST_F(BadInput, Sizes) {
  expectRejected("P5\n0 2\n255\n", "width 0: 1 to 4294967295 are allowed");
  expectRejected("P5\n2 0\n255\n", "height 0: 1 to 4294967295 are allowed");
  expectRejected("P5\n4294967296 1\n255\n", "width 4294967296: 1 to 4294967295 are allowed");
  expectRejected("P5\n1 1\n255\n",
                 "the file is too short: 1x1 samples of 8 bits do not fit its 11 "
                 "bytes");
  expectRejected("P5\n2147483392 1\n255\nabcd",
                 "the file is too short: 2147483392x1 samples of 8 bits do not fit its 24 bytes");
  expectRejected("P5\n2147483393 2147483648\n65535\nabcd",
                 "frame 2147483393x2147483648: it has more than 2147483392 rows or columns");
  expectRejected("P5\n65536 65536\n255\nabcd",
                 "frame 65536x65536: it has more than 4294967295 samples");
}

TEST_F(BadInput, OnePixelHasNoColour) {
  const std::string file = pgm(1, 1, 255, plain);
  expectRejected(file, "frame 1x1: algorithm bilinear needs 2x2 pixels or more", "--phase rggb");
  EXPECT_EQ(scratch.vistrel("convert in.pgm -o out.png --phase mono").status, 0);
}

TEST_F(BadInput, Region) {
  const std::string file = pgm(20, 10, 255, plain);
  expectRejected(file, "--roi 20x10+1+0: it extends beyond the frame of 20x10",
                 "--phase rggb --roi 20x10+1+0");
  expectRejected(file, "--roi 4x4+4294967295+0: it extends beyond the frame of 20x10",
                 "--phase rggb --roi 4x4+4294967295+0");
  expectRejected(file, "--roi 0x4+0+0: it is empty", "--phase rggb --roi 0x4+0+0");
  expectRejected(file, "--roi 3x10+0+0: it contains no whole bin of 4x4 pixels",
                 "--phase rggb --roi 3x10+0+0 --bin 4");
}

TEST_F(BadInput, Bits) {
  expectRejected(pgm(4, 4, 255, plain), "--bits 12: samples of one byte have 8",
                 "--phase rggb --bits 12");
  expectRejected(
      pgm(4, 4, 65535, [](uint32_t x, uint32_t y) { return x == 3 && y == 2 ? 1024 : 9; }),
      "sample 1024 at column 3, row 2: samples of 10 bits are at most 1023",
      "--phase rggb --bits 10");
  expectRejected(pgm(4, 4, 255, plain),
                 "--curve 2: it needs 10 bits or more; the samples have 8; develop --look has "
                 "curves for any depth",
                 "--phase rggb --curve 2");
  expectRejected(pgm(4, 4, 255, plain), "--depth 16: it needs 2 bytes per sample; this frame has 1",
                 "--phase rggb --depth 16");
}

TEST_F(BadInput, FormatForTheOtherKindOfFrame) {
  expectRejected(pgm(4, 4, 1023, plain), "--format bgr48: it is for Bayer frames; this one is mono",
                 "--phase mono --format bgr48");
  expectRejected(pgm(4, 4, 255, plain), "--window 1: it needs 9 bits or more; the samples have 8",
                 "--phase rggb --window 1");
}

TEST_F(BadInput, UnspecifiedPhase) {
  expectRejected(
      pgm(4, 4, 255, plain),
      "--phase is missing, and the file does not specify it. It names the colours of the 2x2 "
      "block in the top left corner of the frame: rggb, bggr, grbg or gbrg; mono is for a frame "
      "without colour filters. With --from-name the file's name specifies it",
      "");
}

TEST_F(BadInput, NameWithoutBitsAndPhase) {
  expectRejected(pgm(4, 4, 65535, plain),
                 "--from-name: the name does not end in _<bits>b_<phase> or _<bits>b, as in "
                 "rose_12b_rggb.pgm",
                 "--from-name");
}

TEST_F(BadInput, PictureTypeForTheOtherKindOfFrame) {
  scratch.write("in.pgm", pgm(4, 4, 255, plain));
  const Finished colour = scratch.vistrel("convert in.pgm --phase rggb -o out.pgm");
  EXPECT_EQ(colour.status, 3);
  EXPECT_EQ(colour.err,
            "vistrel: in.pgm: a rggb frame becomes colour, and out.pgm holds gray: use .ppm or "
            ".png, or --format gray8\n");
  const Finished gray = scratch.vistrel("convert in.pgm --phase mono -o out.ppm");
  EXPECT_EQ(gray.status, 3);
  EXPECT_EQ(
      gray.err,
      "vistrel: in.pgm: a mono frame becomes gray, and out.ppm holds colour: use .pgm or .png\n");
}

TEST_F(BadInput, HeaderlessFileThatIsTooShort) {
  scratch.write("in.pgm", std::string(99, 'x'));
  expect(3, "the file is too short: 10x10 samples of 8 bits do not fit its 99 bytes",
         "--phase mono -s 10x10 --bits 8");
  const std::string tooShort = "the file is too short: 9x11 samples of 8 bits do not fit the ";
  expect(3, tooShort + "98 bytes after --skip 1", "--phase mono -s 9x11 --bits 8 --skip 1");
  expect(3, tooShort + "0 bytes after --skip 18446744073709551615",
         "--phase mono -s 9x11 --bits 8 --skip 18446744073709551615");
  expect(3, "the file is too short: 9x11 samples of 8 bits do not fit its 99 bytes",
         "--phase mono -s 9x11 --bits 8 --stride 10");
  expect(3, "--stride 8: a row of 9 samples has 9 bytes",
         "--phase mono -s 9x11 --bits 8 --stride 8");
}

}  // namespace
}  // namespace vistrel
