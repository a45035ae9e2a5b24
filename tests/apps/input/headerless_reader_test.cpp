// Headerless raw files, by the options that describe them.
#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct HeaderlessReader : InputTest {};

TEST_F(HeaderlessReader, HeaderlessFileOfSeveralFrames) {
  scratch.write("in.raw", "head" + std::string("aaxbbxccxddxe"));
  const std::string options = "in.raw -s 2x2 --bits 8 --skip 4 --stride 3 ";
  const std::string said = "vistrel: in.raw: 1 byte after the last frame is ignored\n";
  EXPECT_EQ(info(options, said)["frames"], 2);
  EXPECT_EQ(info(options, said)["trailing_bytes"], 1);
  EXPECT_EQ(info(options, said)["min"], 'a');
  EXPECT_EQ(info(options, said)["max"], 'b');
  EXPECT_EQ(info(options + "--frame 1", said)["min"], 'c');
  EXPECT_EQ(info(options + "--frame 1", said)["max"], 'd');
}

TEST_F(HeaderlessReader, LastHeaderlessRowNeedsNoPadding) {
  scratch.write("in.raw", "aaxbbxccxdd");
  EXPECT_EQ(info("in.raw -s 2x2 --bits 8 --stride 3")["frames"], 2);
  EXPECT_EQ(info("in.raw -s 2x2 --bits 8 --stride 3")["trailing_bytes"], 0);
}

// The samples 0x3FF, 0, 0x155, 1, packed by hand.
TEST_F(HeaderlessReader, HeaderlessFilesByPixelFormat) {
  using namespace std::string_literals;
  const std::pair<const char*, std::string> files[] = {
      {"BayerRG10p", "\xFF\x03\x50\x55\x00"s},  // 0x155 << 20 | 1 << 30, lowest byte first
      {"BayerRG10Packed", "\xFF\x03\x00\x55\x11\x00"s},
      {"pRAA", "\xFF\x00\x55\x00\x53"s},
      {"rggb10le", "\xFF\x03\x00\x00\x55\x01\x01\x00"s}};
  for (const auto& [name, bytes] : files) {
    scratch.write("in.raw", bytes);
    const std::string arguments = std::string("in.raw -s 4x1 --pixfmt ") + name;
    const auto description = info(arguments);
    EXPECT_EQ(description["phase"], "rggb") << name;
    EXPECT_EQ(description["bits"], 10) << name;
    const Finished result =
        scratch.vistrel("convert " + arguments + " --phase mono --depth 16 -o out.pgm");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(scratch.read("out.pgm"), "P5\n4 1\n1023\n\x03\xFF\x00\x00\x01\x55\x00\x01"s) << name;
  }
}

TEST_F(HeaderlessReader, HeaderlessFileOfHighBits) {
  scratch.write("in.raw", std::string("\xFF\xC0\x00\x40\x55\x40", 6));
  const std::string arguments = "in.raw -s 3x1 --bits 10 --endian big --align high";
  EXPECT_EQ(info(arguments)["full_scale"], 0xFFC0);
  const Finished result =
      scratch.vistrel("convert " + arguments + " --phase mono --depth 16 -o out.pgm");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(scratch.read("out.pgm"), std::string("P5\n3 1\n1023\n\x03\xFF\0\x01\x01\x55", 18));
}

TEST_F(HeaderlessReader, ConflictingOptionsOfHeaderlessFiles) {
  scratch.write("in.raw", std::string(40, 'x'));
  const auto expect = [this](const std::string& options, const std::string& text) {
    const Finished result = scratch.vistrel("info in.raw -s 4x2 " + options);
    EXPECT_EQ(result.status, 3) << options;
    EXPECT_EQ(result.err, "vistrel: in.raw: " + text + "\n");
  };
  expect("--pixfmt BayerRG10p --bits 12", "--bits 12: samples of that --pixfmt have 10");
  expect("--pixfmt BayerRG10p --align high", "--align high: it applies to 16-bit samples only");
  expect("--bits 8 --align high", "--align high: it applies to 16-bit samples only");
  expect("--pixfmt BayerRG12p --skip 30",
         "the file is too short: 4x2 samples of 12 bits do not fit the 10 bytes after --skip 30");
}

TEST_F(HeaderlessReader, HeaderlessFilesWithAHeader) {
  const auto expectNote = [this](const std::string& begin, const std::string& kind) {
    scratch.write("in.raw", begin + std::string(416 - begin.size(), 'x'));
    const std::string note =
        "vistrel: in.raw: read as headerless raw because of --size; it begins like a " + kind +
        " file\n";
    EXPECT_EQ(scratch.vistrel("info in.raw -s 4x4 --bits 8").err, note);
    EXPECT_EQ(scratch.vistrel("unpack in.raw -s 4x4 --pixfmt GREY -o out.pgm").err, note);
    EXPECT_EQ(scratch.vistrel("convert in.raw -s 4x4 --bits 8 --phase mono --frame 0 -o o.png").err,
              note);
    EXPECT_EQ(scratch.vistrel("info in.raw -s 4x4 --bits 8 --skip 16").err, "");
    const Finished guess = scratch.vistrel("guess in.raw");
    EXPECT_EQ(guess.status, 3);
    EXPECT_EQ(guess.err, "vistrel: in.raw: it begins like a " + kind +
                             " file, so it is not headerless; vistrel info describes it\n");
  };
  using namespace std::string_literals;
  expectNote("P5\n20 20\n255\n", "PNM (PGM)");
  expectNote("\x89PNG\r\n\x1a\n", "PNG");
  expectNote("II*\0"s, "TIFF (DNG)");
  expectNote("SIMPLE  =", "FITS");
  scratch.write("in.raw", "P5" + std::string(398, 'x'));  // two samples like others
  EXPECT_EQ(scratch.vistrel("info in.raw -s 4x4 --bits 8").err, "");
}

}  // namespace
}  // namespace vistrel
