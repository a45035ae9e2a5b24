// Raw frames that commands write are what the others read, the phase included.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/apps/input/fits_file.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

uint32_t grain(uint32_t x, uint32_t y) { return (x * 977 + y * 331 + (x ^ y) * 57) % 4096; }

struct Frames : ::testing::Test {
  Scratch scratch;

  Frames() { scratch.write("in.pgm", pgm(12, 10, 4095, grain, "grbg")); }
  Finished vistrel(const std::string& command) const {
    const Finished result = scratch.vistrel(command);
    EXPECT_EQ(result.status, 0) << command << ": " << result.err;
    return result;
  }
};

TEST_F(Frames, NeedNoPhaseOfTheUser) {
  for (const std::string file : {"out.pgm", "out.png", "out.dng"}) {
    vistrel("unpack in.pgm -o " + file);
    const Finished converted = vistrel("convert " + file + " --depth 16 -o out.ppm");
    vistrel("convert in.pgm --phase grbg --depth 16 -o expected.ppm");
    EXPECT_EQ(scratch.read("out.ppm"), scratch.read("expected.ppm")) << file;
    EXPECT_EQ(converted.err, "") << file;
    EXPECT_EQ(vistrel("convert " + file + " --phase grbg -o out.ppm").err.find("grbg"),
              std::string::npos);
    EXPECT_NE(vistrel("convert " + file + " --phase rggb -o out.ppm").err.find("using rggb"),
              std::string::npos);
  }
}

TEST_F(Frames, OtherCommentsSayNothing) {
  for (const std::string comment : {"# phase", "# phase xyz", "#phase rggb", "# Phase rggb",
                                    "# a phase rggb", "# phase rggb and more of it"}) {
    scratch.write("other.pgm", "P5\n" + comment + "\n2 2\n255\nabcd");
    const Finished result = scratch.vistrel("convert other.pgm -o out.ppm");
    EXPECT_EQ(result.status, 3) << comment;
    EXPECT_NE(result.err.find("--phase is missing"), std::string::npos) << result.err;
  }
}

TEST_F(Frames, UnpackReadsEveryKind) {
  const auto words = [](const std::string& file) { return file.substr(file.size() - 240); };
  const std::string samples = words(scratch.read("in.pgm"));
  vistrel("unpack in.pgm -o a.png");
  vistrel("unpack in.pgm -o a.dng");
  for (const std::string file : {"a.png", "a.dng"}) {
    vistrel("unpack " + file + " -o out.pgm");
    EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm")) << file;
  }
  std::string swapped = samples;
  for (size_t i = 0; i < swapped.size(); i += 2) std::swap(swapped[i], swapped[i + 1]);
  vistrel("unpack a.dng -o a.raw");
  EXPECT_EQ(scratch.read("a.raw"), swapped);
  vistrel("unpack a.dng -o a.npy");
  EXPECT_EQ(words(scratch.read("a.npy")), swapped);
  auto header = cards(16, {"12", "10"});
  header.push_back(card("BAYERPAT", "'GRBG    '"));
  scratch.write("a.fits", fits(header, samples));
  vistrel("unpack a.fits --bits 12 -o out.pgm");
  EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm"));
}

TEST_F(Frames, UnpackNeedsNoNameOfAFormat) {
  scratch.write("in.raw", std::string("\1\2\3\4\5\6\7\10", 8));
  vistrel("unpack in.raw -s 2x2 --bits 12 --endian big -o out.pgm");
  EXPECT_EQ(scratch.read("out.pgm"), std::string("P5\n2 2\n4095\n\1\2\3\4\5\6\7\10"));
  scratch.write("in.raw", std::string("\x10\x20\x30\x40\x50\x60\x70\x7F", 8));
  vistrel("unpack in.raw -s 2x2 --bits 12 --align high --phase bggr -o out.pgm");
  EXPECT_EQ(scratch.read("out.pgm"),
            std::string("P5\n# phase bggr\n2 2\n4095\n\2\1\4\3\6\5\7\xF7"));
  EXPECT_EQ(scratch.vistrel("unpack in.raw -s 2x2 -o out.pgm").status, 2);
}

TEST_F(Frames, GoToStandardOutput) {
  vistrel("scene -s 40x30 -o a.pgm");
  EXPECT_EQ(vistrel("scene -s 40x30 -o -").out, scratch.read("a.pgm"));
  vistrel("convert a.pgm -o a.ppm");
  vistrel("mosaic a.ppm -o b.pgm --bits 10");
  EXPECT_EQ(vistrel("mosaic a.ppm -o - --bits 10").out, scratch.read("b.pgm"));
  vistrel("mosaic a.ppm -o b.raw --pixfmt BayerGR10p");
  EXPECT_EQ(vistrel("mosaic a.ppm -o - --pixfmt BayerGR10p").out, scratch.read("b.raw"));
  vistrel("scene -s 40x30 -o a.png");
  vistrel("unpack a.png -o c.pgm");
  EXPECT_EQ(scratch.read("c.pgm"), scratch.read("a.pgm"));
}

}  // namespace
}  // namespace vistrel
