// Files of several frames, and what they say about themselves.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

struct Frames : ::testing::Test {
  Scratch scratch;

  nlohmann::json info(const std::string& arguments, const std::string& said = "") const {
    const Finished result = scratch.vistrel("info --json " + arguments);
    EXPECT_EQ(result.status, 0) << arguments;
    EXPECT_EQ(result.err, said);
    return nlohmann::json::parse(result.out);
  }
};

std::string flat(uint32_t value, uint32_t maxval = 255) {
  return pgm(3, 2, maxval, [value](uint32_t, uint32_t) { return value; });
}

TEST_F(Frames, StreamOfPgms) {
  scratch.write("in.pgm", flat(10, 1023) + flat(600, 1023) + flat(30, 1023) + "\n");
  const std::string said = "vistrel: in.pgm: 1 byte after the last frame is ignored\n";
  EXPECT_EQ(info("in.pgm", said)["frames"], 3);
  EXPECT_EQ(info("in.pgm", said)["trailing_bytes"], 1);
  EXPECT_EQ(info("in.pgm", said)["max"], 10);
  EXPECT_EQ(info("in.pgm --frame 1", said)["max"], 600);
  EXPECT_EQ(info("in.pgm --frame 2", said)["mean"], 30);
}

TEST_F(Frames, HeaderlessFileOfSeveralFrames) {
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

TEST_F(Frames, LastHeaderlessRowNeedsNoPadding) {
  scratch.write("in.raw", "aaxbbxccxdd");
  EXPECT_EQ(info("in.raw -s 2x2 --bits 8 --stride 3")["frames"], 2);
  EXPECT_EQ(info("in.raw -s 2x2 --bits 8 --stride 3")["trailing_bytes"], 0);
}

// The samples 0x3FF, 0, 0x155, 1, packed by hand.
TEST_F(Frames, HeaderlessFilesByPixelFormat) {
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

TEST_F(Frames, HeaderlessFileOfHighBits) {
  scratch.write("in.raw", std::string("\xFF\xC0\x00\x40\x55\x40", 6));
  const std::string arguments = "in.raw -s 3x1 --bits 10 --endian big --align high";
  EXPECT_EQ(info(arguments)["full_scale"], 0xFFC0);
  const Finished result =
      scratch.vistrel("convert " + arguments + " --phase mono --depth 16 -o out.pgm");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(scratch.read("out.pgm"), std::string("P5\n3 1\n1023\n\x03\xFF\0\x01\x01\x55", 18));
}

TEST_F(Frames, HighBitsOfFilesWithAHeader) {
  scratch.write("in.pgm", pgm(3, 1, 65535, [](uint32_t x, uint32_t) { return x * 0x5550; }));
  const std::string convert = "convert in.pgm --phase mono --depth 16 -o out.pgm --align high";
  EXPECT_EQ(scratch.vistrel(convert + " --bits 12").err, "");
  EXPECT_EQ(scratch.read("out.pgm"),
            pgm(3, 1, 4095, [](uint32_t x, uint32_t) { return x * 0x555; }));
  EXPECT_EQ(info("in.pgm --align high --bits 12")["full_scale"], 0xFFF0);
  EXPECT_EQ(scratch.vistrel(convert + " --bits 10").err,
            "vistrel: in.pgm: sample 21840 at column 1, row 0: the lowest 6 of 16 bits are 0 in "
            "samples of 10 high bits\n");
  EXPECT_EQ(scratch.vistrel(convert).err,
            "vistrel: in.pgm: --align high: --bits is missing, and the file does not specify it\n");
  scratch.write("in.pgm", pgm(3, 1, 4095, [](uint32_t x, uint32_t) { return x; }));
  EXPECT_EQ(
      scratch.vistrel(convert).err,
      "vistrel: in.pgm: --align high: the file says that its samples are in the low 12 bits\n");
  scratch.write("in.pgm", flat(77));
  EXPECT_EQ(scratch.vistrel(convert).err,
            "vistrel: in.pgm: --align high: it applies to 16-bit samples only\n");
}

TEST_F(Frames, ConflictingOptionsOfHeaderlessFiles) {
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

TEST_F(Frames, HeaderlessFilesWithAHeader) {
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

TEST_F(Frames, OptionsThatContradictTheFile) {
  scratch.write("in.pgm", flat(600, 1023));
  info("in.pgm --bits 10");
  const auto description =
      info("in.pgm --bits 12", "vistrel: in.pgm: using 12 bits; the file says 10\n");
  EXPECT_EQ(description["bits"], 12);
  for (const char* dry : {"", " --dry-run"}) {
    const auto convert = "convert in.pgm --bits 12 --phase mono -o out.png" + std::string(dry);
    EXPECT_EQ(scratch.vistrel(convert).err, "vistrel: in.pgm: using 12 bits; the file says 10\n");
  }
}

TEST_F(Frames, UnspecifiedBits) {
  const auto said = [this](const std::string& arguments) {
    const Finished result = scratch.vistrel("convert " + arguments + " --phase mono -o out.png");
    EXPECT_EQ(result.status, 0) << arguments;
    EXPECT_EQ(result.out, "");
    return result.err;
  };
  scratch.write("in.pgm", flat(2048, 65535));
  EXPECT_EQ(
      said("in.pgm"),
      "vistrel: in.pgm: using 16 bits, only 12 of which are set; --bits 12 would use those\n");
  EXPECT_EQ(said("in.pgm --bits 12"), "");
  EXPECT_EQ(said("in.pgm --bits 16"), "");
  scratch.write("in.raw", std::string("\x03\0\x01\0", 4));
  EXPECT_EQ(said("in.raw -s 2x1 --pixfmt Mono16"), "");
  scratch.write("in.pgm", flat(1, 65535));
  EXPECT_EQ(said("in.pgm"),
            "vistrel: in.pgm: using 16 bits, only 1 of which are set; --bits 8 would use those\n");
  for (const uint32_t quiet : {0u, 32768u}) {
    scratch.write("in.pgm", flat(quiet, 65535));
    EXPECT_EQ(said("in.pgm"), "");
  }
}

TEST_F(Frames, OptionsThatContradictTheName) {
  scratch.write("a_10b_grbg.pgm", flat(600, 1023));
  EXPECT_EQ(
      scratch.vistrel("convert a_10b_grbg.pgm --from-name --phase rggb --bits 16 -o o.png").err,
      "vistrel: a_10b_grbg.pgm: using 16 bits; its name says 10\n"
      "vistrel: a_10b_grbg.pgm: using rggb; its name says grbg\n"
      "vistrel: a_10b_grbg.pgm: using 16 bits; the file says 10\n");
}

TEST_F(Frames, StandardInputAsAFile) {
  scratch.write("in.pgm", flat(77));
  const auto input = [this] { dup2(open((scratch / "in.pgm").c_str(), O_RDONLY), STDIN_FILENO); };
  EXPECT_EQ(nlohmann::json::parse(scratch.vistrel("info --json -", input).out)["max"], 77);
}

TEST_F(Frames, StandardInputAsAPipe) {
  scratch.write("in.pgm", flat(77));
  const std::string program = VISTREL_PROGRAM;
  const Finished result = scratch.run({"sh", "-c", "cat in.pgm | " + program + " info --json -"});
  EXPECT_EQ(nlohmann::json::parse(result.out)["max"], 77);
  const Finished empty = scratch.run({"sh", "-c", "cat /dev/null | " + program + " info -"});
  EXPECT_EQ(empty.status, 3);
  EXPECT_EQ(empty.err, "vistrel: -: the file is empty\n");
  const Finished closed = scratch.run({"sh", "-c", program + " info - <&-"});
  EXPECT_EQ(closed.status, 4);
  EXPECT_EQ(closed.err, "vistrel: -: cannot be read: Bad file descriptor\n");
  EXPECT_EQ(scratch.run({"sh", "-c", program + " info - 0>>in.pgm"}).status, 4) << "write only";
}

TEST_F(Frames, GrayPng) {
  scratch.write("in.pgm", pgm(5, 4, 4095, [](uint32_t x, uint32_t y) { return 1000 * x + y; }));
  ASSERT_EQ(scratch.vistrel("convert in.pgm --phase mono --depth 16 -o out.png").status, 0);
  EXPECT_EQ(info("out.png")["format"], "PNG");
  EXPECT_EQ(info("out.png")["bits"], 12);
  EXPECT_EQ(info("out.png")["max"], 4003);
  ASSERT_EQ(scratch.vistrel("convert out.png --phase mono --depth 16 -o out.pgm").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm"));
}

}  // namespace
}  // namespace vistrel
