// Phases of crops and mirrored frames, compared with frames of letters that are really cropped and
// rotated.
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include <fmt/format.h>

#include "tests/apps/program.h"

namespace vistrel {
namespace {

TEST(Cfa, CaseIsIgnored) {
  const Scratch scratch;
  EXPECT_EQ(scratch.vistrel("cfa RGGB").out, scratch.vistrel("cfa rggb").out);
  EXPECT_EQ(scratch.vistrel("cfa RGGB").status, 0);
}

using Letters = std::vector<std::string>;  // rows

Letters frame(const std::string& phase, size_t width, size_t height) {
  Letters rows(height, std::string(width, ' '));
  for (size_t y = 0; y < height; ++y)
    for (size_t x = 0; x < width; ++x) rows[y][x] = phase[2 * (y % 2) + x % 2];
  return rows;
}

Letters cropped(const Letters& from, size_t width, size_t height, size_t x, size_t y) {
  Letters rows;
  for (size_t i = 0; i < height; ++i) rows.push_back(from[y + i].substr(x, width));
  return rows;
}

Letters flippedH(Letters rows) {
  for (std::string& row : rows) std::reverse(row.begin(), row.end());
  return rows;
}

Letters flippedV(Letters rows) {
  std::reverse(rows.begin(), rows.end());
  return rows;
}

std::string phaseOf(const Letters& rows) { return rows[0].substr(0, 2) + rows[1].substr(0, 2); }

std::string resultOf(const std::string& arguments) {
  const Finished result = Scratch().vistrel("cfa " + arguments + " --json");
  EXPECT_EQ(result.status, 0) << result.err;
  return nlohmann::json::parse(result.out)["phase"];
}

const std::vector<std::string> kPhases{"rggb", "bggr", "grbg", "gbrg"};

TEST(Cfa, Crops) {
  for (const std::string& phase : kPhases)
    for (size_t x = 0; x < 2; ++x)
      for (size_t y = 0; y < 2; ++y)
        EXPECT_EQ(
            resultOf(phase + " --crop 4x4+" + std::to_string(x + 2) + "+" + std::to_string(y)),
            phaseOf(cropped(frame(phase, 8, 8), 4, 4, x + 2, y)));
}

TEST(Cfa, FlipsAndRotations) {
  for (const std::string& phase : kPhases)
    for (size_t width : {6, 7})
      for (size_t height : {4, 5}) {
        const std::string size = phase + fmt::format(" -s {}x{}", width, height);
        const Letters rows = frame(phase, width, height);
        EXPECT_EQ(resultOf(size + " --flip h"), phaseOf(flippedH(rows)));
        EXPECT_EQ(resultOf(size + " --flip v"), phaseOf(flippedV(rows)));
        EXPECT_EQ(resultOf(size + " --rotate 180"), phaseOf(flippedV(flippedH(rows))));
      }
}

TEST(Cfa, CropThenFlipThenRotate) {
  const Letters crop = cropped(frame("grbg", 9, 9), 5, 4, 1, 2);
  EXPECT_EQ(resultOf("grbg -s 9x9 --crop 5x4+1+2 --flip h --rotate 180"), phaseOf(flippedV(crop)));
}

TEST(Cfa, WithoutASizeItIsEven) {
  EXPECT_EQ(resultOf("rggb --flip h"), "grbg");
  EXPECT_EQ(resultOf("rggb --flip v"), "gbrg");
  EXPECT_EQ(resultOf("rggb --rotate 180"), "bggr");
}

TEST(Cfa, OtherNames) {
  EXPECT_EQ(resultOf("blue=1,1"), "rggb");
  EXPECT_EQ(resultOf("blue=0,1 --crop 2x2+1+0"), "bggr");
  EXPECT_EQ(resultOf("mono --crop 3x3+1+1 --flip h"), "mono");
}

TEST(Cfa, Text) {
  EXPECT_EQ(Scratch().vistrel("cfa rggb --crop 640x480+1+1").out,
            "phase            bggr\n"
            "rows             BG/GR\n"
            "nBayer           1\n"
            "blue=y,x         0,0\n"
            "FITS BAYERPAT    BGGR\n"
            "DNG CFAPattern   02 01 01 00\n"
            "OpenCV           COLOR_BayerRG2BGR (the letters of row 1, column 1)\n"
            "constant         VISTREL_BGGR\n"
            "PFNC             BayerBG8 BayerBG10 BayerBG12 BayerBG14 BayerBG16 BayerBG10p "
            "BayerBG12p BayerBG14p BayerBG10Packed BayerBG12Packed\n"
            "V4L2 codes       BA81 BG10 BG12 BG14 BYR2 pBAA pBCC pBEE\n"
            "V4L2 names       SBGGR8 SBGGR10 SBGGR12 SBGGR14 SBGGR16 SBGGR10P SBGGR12P SBGGR14P\n"
            "libcamera        SBGGR8 SBGGR10 SBGGR12 SBGGR14 SBGGR16 SBGGR10_CSI2P SBGGR12_CSI2P "
            "SBGGR14_CSI2P\n"
            "GStreamer        bggr bggr10le bggr12le bggr14le bggr16le bggr10be bggr12be bggr14be "
            "bggr16be\n"
            "FFmpeg           bayer_bggr8 bayer_bggr16le bayer_bggr16be\n");
}

TEST(Cfa, Errors) {
  const Scratch scratch;
  const struct {
    const char *arguments, *text;
  } cases[] = {
      {"rgb", "PHASE rgb: rggb, bggr, grbg, gbrg and mono are allowed"},
      {"rggb --crop 0x4+1+1", "--crop 0x4+1+1: it is empty"},
      {"rggb -s 8x8 --crop 4x4+5+0", "--crop 4x4+5+0: it extends beyond the frame of 8x8"},
      {"rggb -s 8x8 --crop 4x4+0+4294967295",
       "--crop 4x4+0+4294967295: it extends beyond the frame of"},
      {"rggb --flip x", "--flip x: h, v are allowed"},
      {"rggb --rotate 90", "--rotate 90: 180 is allowed"},
  };
  for (const auto& c : cases) {
    const Finished result = scratch.vistrel(std::string("cfa ") + c.arguments);
    EXPECT_EQ(result.status, 2) << c.arguments;
    EXPECT_EQ(result.err.find(std::string("vistrel: ") + c.text), 0u) << result.err;
  }
}

}  // namespace
}  // namespace vistrel
