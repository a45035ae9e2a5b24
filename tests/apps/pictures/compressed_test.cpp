// Compressed pictures: what other programs read, and what the files say besides pixels.
#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstdio>
#include <sstream>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "tests/apps/texture.h"

namespace vistrel {
namespace {

uint32_t slope(uint32_t x, uint32_t y) { return 40 * (x + y); }

struct Compressed : ::testing::Test {
  Scratch scratch;

  Compressed() {
    scratch.write("in.pgm", pgm(43, 31, 4095, texture, "rggb"));
    scratch.write("smooth.pgm", pgm(43, 31, 4095, slope, "rggb"));
    scratch.write("flat.pgm", pgm(
                                  64, 400, 4095, [](auto, auto) { return 2000u; }, "mono"));
  }
  bool has(const std::string& tool) const {
    return scratch.run({"sh", "-c", "command -v " + tool}).status == 0;
  }
  void run(const std::string& command) const {
    const Finished result = scratch.vistrel(command);
    ASSERT_EQ(result.status, 0) << command << ": " << result.err;
  }
  std::string shell(const std::string& command) const {
    const Finished result = scratch.run({"sh", "-c", command});
    EXPECT_EQ(result.status, 0) << command << ": " << result.err;
    return result.out;
  }
  size_t sizeOf(const std::string& name) const { return scratch.read(name).size(); }
};

TEST_F(Compressed, EveryLevelOfPngHasTheSamePixels) {
  run("convert in.pgm -o out.png");
  const auto expected = readPng(scratch / "out.png").samples;
  for (int level = 0; level <= 9; ++level) {
    run("convert in.pgm -o level.png --compression " + std::to_string(level));
    EXPECT_EQ(readPng(scratch / "level.png").samples, expected) << level;
    run("convert flat.pgm -o flat.png --compression " + std::to_string(level));
    EXPECT_EQ(readPng(scratch / "flat.png").samples, std::vector<uint16_t>(64 * 400, 125));
    EXPECT_EQ(sizeOf("flat.png") < 1000, level > 0);
  }
}

TEST_F(Compressed, ALargePngHasSeveralChunks) {
  const auto sample = [](uint32_t x, uint32_t y) {
    return (x * 2654435761u ^ y * 40503u * x) >> 16 & 4095;
  };
  scratch.write("noise.pgm", pgm(501, 400, 4095, sample, "mono"));
  run("convert noise.pgm --depth 16 -o out.png");
  EXPECT_GT(sizeOf("out.png"), size_t{3} << 16);
  const Picture picture = readPng(scratch / "out.png");
  ASSERT_EQ(picture.samples.size(), 501 * 400u);
  EXPECT_EQ(picture.significant, 12u);
  for (uint32_t y = 0; y < 400; ++y)
    for (uint32_t x = 0; x < 501; ++x)
      ASSERT_EQ(picture.at(x, y, 0), sample(x, y) << 4 | sample(x, y) >> 8);
}

TEST_F(Compressed, PngcheckFindsNoFault) {
  if (!has("pngcheck")) GTEST_SKIP() << "pngcheck is not installed";
  for (const std::string options :
       {"convert in.pgm", "convert in.pgm --depth 16", "convert in.pgm --format rgba",
        "convert flat.pgm", "develop in.pgm", "develop smooth.pgm --look curve=gamma:2.2",
        "unpack in.pgm"}) {
    run(options + " -o out.png");
    EXPECT_EQ(shell("pngcheck -q out.png"), "") << options;
  }
}

TEST_F(Compressed, EveryTiffHasTheSamePixels) {
  if (!has("tifftopnm")) GTEST_SKIP() << "netpbm is not installed";
  for (const std::string depth : {"8", "16"})
    for (const std::string compression : {"0", "1", "9", "lzw"}) {
      run("convert in.pgm --depth " + depth + " -o none.tif");
      run("convert in.pgm --depth " + depth + " -o out.tif --compression " + compression);
      EXPECT_EQ(shell("tifftopnm -byrow out.tif 2>/dev/null"),
                shell("tifftopnm -byrow none.tif 2>/dev/null"))
          << depth << " " << compression;
    }
  run("convert flat.pgm -o out.tif --compression lzw");
  EXPECT_LT(sizeOf("out.tif"), 3000u);
  const std::string text = shell("tiffinfo out.tif");
  EXPECT_NE(text.find("LZW"), text.npos) << text;
  EXPECT_NE(text.find("Rows/Strip: 400"), text.npos) << text;
}

// 4:4:4 keeps the colours of single pixels, and the highest quality all values, nearly.
TEST_F(Compressed, JpegIsNearTheSamples) {
  if (!has("djpeg")) GTEST_SKIP() << "djpeg is not installed";
  for (const std::string format : {"bgr24", "gray8"}) {
    const std::string convert = "convert smooth.pgm --format " + format + " -o ";
    run(convert + "out.jpg --quality 100");
    run(convert + "out.pam");
    run(convert + "low.jpg --quality 30");
    EXPECT_LT(sizeOf("low.jpg"), sizeOf("out.jpg"));
    const std::string read = shell("djpeg out.jpg"), pam = scratch.read("out.pam");
    const size_t samples = 43 * 31 * (format == "gray8" ? 1 : 3);
    ASSERT_GT(read.size(), samples);
    for (size_t i = 1; i <= samples; ++i)
      ASSERT_LE(std::abs(static_cast<uint8_t>(read[read.size() - i]) -
                         static_cast<uint8_t>(pam[pam.size() - i])),
                3)
          << format << ": " << i;
  }
}

TEST_F(Compressed, JpegSaysHowItWasMade) {
  if (!has("exiftool")) GTEST_SKIP() << "exiftool is not installed";
  const auto field = [this](const std::string& name, const std::string& file) {
    return shell("exiftool -s3 -" + name + " " + file);
  };
  run("convert in.pgm -o linear.jpg");
  run("develop in.pgm --look srgb -o srgb.jpg --chroma 420");
  for (const std::string file : {"linear.jpg", "srgb.jpg"})
    EXPECT_EQ(shell("exiftool -validate -warning -error -a -s3 " + file), "OK\n") << file;
  EXPECT_EQ(field("ColorSpace", "srgb.jpg"), "sRGB\n");
  EXPECT_EQ(field("ColorSpace", "linear.jpg"), "Uncalibrated\n");
  EXPECT_EQ(field("YCbCrSubSampling", "linear.jpg"), "YCbCr4:4:4 (1 1)\n");
  EXPECT_EQ(field("YCbCrSubSampling", "srgb.jpg"), "YCbCr4:2:0 (2 2)\n");
  EXPECT_EQ(field("ImageDescription", "linear.jpg"), "vistrel convert in.pgm\n");
}

TEST_F(Compressed, WhatAJpegCannotHold) {
  const std::string convert = "convert in.pgm --phase rggb -o out.jpg ";
  EXPECT_EQ(scratch.vistrel(convert + "--depth 16").err,
            "vistrel: in.pgm: a .jpg has 8 bits; .png and .tif hold 12\n");
  EXPECT_EQ(scratch.vistrel(convert + "--format rgba").err,
            "vistrel: in.pgm: a .jpg has no alpha; .png and .tif hold it\n");
  scratch.write("wide.pgm", pgm(65501, 2, 255, texture, "mono"));
  EXPECT_EQ(scratch.vistrel("convert wide.pgm --phase mono -o out.jpg").err,
            "vistrel: wide.pgm: 65501x2 pixels: a .jpg has at most 65500x65500\n");
  for (const std::string command : {"convert", "develop"})
    EXPECT_EQ(scratch.vistrel(command + " wide.pgm --phase mono --dry-run -o out.jpg").status, 3);
  EXPECT_EQ(scratch.vistrel(convert + "--compression 3").status, 2);
  EXPECT_EQ(scratch.vistrel("convert in.pgm -o out.png --quality 80").status, 2);
  EXPECT_EQ(scratch.vistrel("convert in.pgm -o out.png --compression lzw").status, 2);
  EXPECT_EQ(scratch.vistrel("convert in.pgm -o out.ppm --chroma 420").status, 2);
}

struct PngText {
  double gamma = 0;
  bool srgb = false;
  std::string command, software;

  explicit PngText(const std::filesystem::path& path) {
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_read_info(png, info);
    png_get_gAMA(png, info, &gamma);
    srgb = png_get_valid(png, info, PNG_INFO_sRGB) != 0;
    png_textp texts = nullptr;
    const int count = png_get_text(png, info, &texts, nullptr);
    for (int i = 0; i < count; ++i)
      (texts[i].key == std::string("Description") ? command : software) = texts[i].text;
    png_destroy_read_struct(&png, &info, nullptr);
    std::fclose(file);
  }
};

TEST_F(Compressed, PngSaysHowItWasMade) {
  const struct {
    const char* command;
    double gamma;  // 0: not said
    bool srgb;
  } cases[] = {{"convert in.pgm --depth 16", 1, false},
               {"convert in.pgm --window 1", 1, false},
               {"convert in.pgm --curve lighter", 0, false},
               {"develop in.pgm --look linear", 1, false},
               {"develop in.pgm --look srgb", 0.45455, true},
               {"develop in.pgm --look curve=gamma:2", 0.5, false},
               {"develop in.pgm --look curve=asinh:50", 0, false}};
  std::filesystem::create_directory(scratch / "folder");
  std::filesystem::copy(scratch / "in.pgm", scratch / "folder/in.pgm");
  for (const auto& c : cases) {
    std::string command = c.command;
    command.insert(8, "folder/");
    run(command + " -o out.png");
    const PngText text(scratch / "out.png");
    EXPECT_NEAR(text.gamma, c.gamma, 1e-5) << command;
    EXPECT_EQ(text.srgb, c.srgb) << command;
    EXPECT_EQ(text.software.substr(0, 8), "vistrel ");
    const std::string made = text.command;
    EXPECT_EQ(made.substr(0, 22), std::string("vistrel ") + std::string(c.command).substr(0, 14));
    const auto samples = readPng(scratch / "out.png").samples;
    run(made.substr(8) + " -o again.png");  // it makes the same picture
    EXPECT_EQ(readPng(scratch / "again.png").samples, samples) << made;
  }
}

TEST_F(Compressed, TextsThatAreNotAscii) {
  const std::string name = "fr\xC3\xBChling.pgm";
  scratch.write(name, pgm(4, 4, 255, texture, "rggb"));
  run("convert " + name + " -o out.png");
  EXPECT_EQ(PngText(scratch / "out.png").command, "vistrel convert '" + name + "'");
}

TEST_F(Compressed, TiffSaysHowItWasMade) {
  if (!has("tiffinfo")) GTEST_SKIP() << "libtiff-tools is not installed";
  run("convert in.pgm --depth 16 -o out.tif");
  const std::string text = shell("tiffinfo out.tif");
  EXPECT_NE(text.find("ImageDescription: vistrel convert in.pgm --depth 16\n12 significant bits"),
            text.npos)
      << text;
  EXPECT_NE(text.find("Software: vistrel "), text.npos) << text;
}

// Red, green, blue of a PPM's last bytes.
TEST_F(Compressed, ArraysOfNumpy) {
  if (scratch.run({"/usr/bin/python3", "-c", "import numpy, tifffile"}).status != 0)
    GTEST_SKIP() << "python3-numpy and python3-tifffile are not installed";
  const struct {
    const char *options, *shape, *type;
    size_t bytes;
  } cases[] = {{"", "31x43x3", "uint8", 1},
               {"--depth 16", "31x43x3", "uint16", 2},
               {"--format gray8", "31x43", "uint8", 1},
               {"--format rgba", "31x43x4", "uint8", 1}};
  for (const auto& c : cases)
    for (const std::string file : {"out.npy", "out.tif"}) {
      const std::string convert = std::string("convert in.pgm ") + c.options + " -o ";
      run(convert + file);
      run(convert + "out.pam");
      std::istringstream in(scratch.run({"/usr/bin/python3", VISTREL_PRINT_ARRAY, file}).out);
      std::string shape, type;
      in >> shape >> type;
      EXPECT_EQ(shape, c.shape) << c.options;
      EXPECT_EQ(type, c.type) << c.options;
      const std::string pam = scratch.read("out.pam");
      size_t at = pam.find("ENDHDR\n") + 7;
      for (uint32_t sample; in >> sample; at += c.bytes) {
        uint32_t expected = static_cast<uint8_t>(pam.at(at));
        if (c.bytes == 2) expected = expected << 8 | static_cast<uint8_t>(pam.at(at + 1));
        if (c.bytes == 2 && file == "out.tif") expected = expected << 4 | expected >> 8;
        ASSERT_EQ(sample, expected) << c.options << " " << file << " " << at;
      }
      EXPECT_EQ(at, pam.size()) << c.options;
    }
}

}  // namespace
}  // namespace vistrel
