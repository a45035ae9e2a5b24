// Other programs read the same samples from the files that this one writes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "tests/apps/texture.h"

namespace vistrel {
namespace {

struct Written : ::testing::Test {
  Scratch scratch;

  Written() {
    scratch.write("in.pgm", pgm(23, 17, 4095, texture));
    scratch.write("in16.pgm",
                  pgm(23, 17, 65535, [](auto x, auto y) { return texture(x, y) * 16; }));
  }
  bool has(const std::string& tool) const {
    return scratch.run({"sh", "-c", "command -v " + tool}).status == 0;
  }
  void convert(const std::string& options) const {
    const Finished result = scratch.vistrel("convert " + options);
    ASSERT_EQ(result.status, 0) << result.err;
  }
  // The standard output of a shell command.
  std::string shell(const std::string& command) const {
    const Finished result = scratch.run({"sh", "-c", command});
    EXPECT_EQ(result.status, 0) << command << ": " << result.err;
    return result.out;
  }
};

const std::string kKinds[] = {"in.pgm --phase rggb -a bilinear", "in.pgm --phase mono",
                              "in16.pgm --phase rggb --depth 16",
                              "in16.pgm --phase mono --depth 16"};

TEST_F(Written, NetpbmReadsTheSame) {
  if (!has("pngtopnm") || !has("tifftopnm") || !has("pamtopnm"))
    GTEST_SKIP() << "netpbm is not installed";
  for (const std::string& kind : kKinds) {
    const std::string pnm = kind.find("mono") == std::string::npos ? "out.ppm" : "out.pgm";
    for (const char* const out : {pnm.c_str(), "out.png", "out.tif", "out.pam"})
      convert(kind + " -o " + out);
    EXPECT_EQ(shell("pngtopnm out.png"), scratch.read(pnm)) << kind;
    EXPECT_EQ(shell("tifftopnm -byrow out.tif 2>/dev/null"), scratch.read(pnm)) << kind;
    EXPECT_EQ(shell("pamtopnm out.pam"), scratch.read(pnm)) << kind;
    EXPECT_EQ(shell("pamtopnm " + pnm), scratch.read(pnm)) << kind;
  }
}

// Frames of 16-bit samples may have 8 significant bits. Their pictures are those of bytes.
TEST_F(Written, EightBitsInSixteen) {
  scratch.write("bytes.pgm", pgm(23, 17, 255, [](auto x, auto y) { return texture(x, y) / 16; }));
  scratch.write("words.pgm", pgm(23, 17, 65535, [](auto x, auto y) { return texture(x, y) / 16; }));
  const auto expectSame = [this](const std::string& phase, const std::string& out,
                                 const std::string& decoder) {
    convert("bytes.pgm --phase " + phase + " -o " + out);
    const std::string bytes = decoder.empty() ? scratch.read(out) : shell(decoder + " " + out);
    convert("words.pgm --bits 8 --depth 16 --phase " + phase + " -o " + out);
    EXPECT_EQ(decoder.empty() ? scratch.read(out) : shell(decoder + " " + out), bytes)
        << phase << ' ' << out;
  };
  for (const std::string phase : {"gbrg", "mono"}) {
    for (const std::string out : {"out.pnm", "out.pam", "out.npy"}) expectSame(phase, out, "");
    if (has("pngtopnm")) expectSame(phase, "out.png", "pngtopnm");
    if (has("tifftopnm")) expectSame(phase, "out.tif", "tifftopnm -quiet -byrow");
    if (has("djpeg")) expectSame(phase, "out.jpg", "djpeg");
  }
}

// Red, green, blue of a PPM, or gray of a PGM, as numbers.
std::vector<uint32_t> samplesOf(const std::string& pnm) {
  std::istringstream in(pnm);
  std::string type;
  uint32_t width = 0, height = 0, maxval = 0;
  in >> type >> width >> height >> maxval;
  in.get();
  std::vector<uint32_t> samples;
  for (int c; (c = in.get()) != EOF;)
    samples.push_back(maxval > 255 ? static_cast<uint32_t>(c << 8 | in.get())
                                   : static_cast<uint32_t>(c));
  return samples;
}

TEST_F(Written, PillowReadsTheSame) {
  if (scratch.run({"/usr/bin/python3", "-c", "import PIL"}).status != 0)
    GTEST_SKIP() << "python3-pil is not installed";
  for (const int i : {0, 1, 3}) {  // it doesn't support 16-bit colour
    const std::string& kind = kKinds[i];
    const std::string pnm = kind.find("mono") == std::string::npos ? "out.ppm" : "out.pgm";
    convert(kind + " -o " + pnm);
    for (const char* const out : {"out.png", "out.tif"}) {
      convert(kind + " -o " + out);
      std::istringstream in(scratch.run({"/usr/bin/python3", VISTREL_PRINT_SAMPLES, out}).out);
      std::string width, height, mode;
      in >> width >> height >> mode;
      std::vector<uint32_t> samples;
      for (uint32_t sample; in >> sample;) samples.push_back(sample);
      EXPECT_EQ(width + "x" + height, "23x17");
      EXPECT_EQ(samples, samplesOf(scratch.read(pnm))) << kind << " " << out;
    }
  }
}

// That tool writes a single strip, whose samples follow the header's 8 bytes.
TEST_F(Written, LibtiffsToolsReadTheSame) {
  if (!has("tiffcp") || !has("tiffinfo")) GTEST_SKIP() << "libtiff-tools is not installed";
  for (const std::string& kind : kKinds) {
    const std::string pnm = kind.find("mono") == std::string::npos ? "out.ppm" : "out.pgm";
    convert(kind + " -o out.tif");
    convert(kind + " -o " + pnm);
    EXPECT_EQ(scratch.run({"tiffinfo", "-D", "out.tif"}).err, "");
    shell("tiffcp -L -c none -r 17 out.tif copy.tif");
    const std::string copy = scratch.read("copy.tif");
    std::vector<uint32_t> samples;
    const bool wide = kind.find("16") != std::string::npos;
    const auto byte = [&copy](size_t i) { return static_cast<uint8_t>(copy[i]); };
    const auto expected = samplesOf(scratch.read(pnm));
    for (size_t i = 0; i < expected.size(); ++i)
      samples.push_back(wide ? byte(8 + 2 * i) | byte(9 + 2 * i) << 8 : byte(8 + i));
    EXPECT_EQ(samples, expected) << kind;
  }
}

std::string behind(const std::string& text, const std::string& mark) {
  const size_t at = text.find(mark);
  return at == text.npos ? "" : text.substr(at + mark.size());
}

// Every picture has the samples of the headerless raw file: red, green, blue and an alpha of 255.
TEST_F(Written, AlphaIsReadByOthers) {
  if (!has("pngtopam") || !has("tifftopnm")) GTEST_SKIP() << "netpbm is not installed";
  const std::string kind = "in.pgm --phase rggb --format rgba -o ";
  for (const char* const out : {"out.raw", "out.pam", "out.png", "out.tif"}) convert(kind + out);
  const std::string rgba = scratch.read("out.raw");
  ASSERT_EQ(rgba.size(), 23 * 17 * 4u);
  EXPECT_EQ(behind(scratch.read("out.pam"), "TUPLTYPE RGB_ALPHA\nENDHDR\n"), rgba);
  EXPECT_EQ(scratch.vistrel("convert " + kind + "-").out, scratch.read("out.pam"));
  EXPECT_EQ(behind(shell("pngtopam -alphapam out.png"), "ENDHDR\n"), rgba);
  convert("in.pgm --phase rggb -o out.ppm");
  EXPECT_EQ(shell("tifftopnm -byrow -alphaout=alpha.pgm out.tif 2>/dev/null"),
            scratch.read("out.ppm"));
  EXPECT_EQ(behind(scratch.read("alpha.pgm"), "255\n"), std::string(23 * 17, '\xFF'));
  for (const char* const out : {"out.png", "out.tif"}) {
    std::istringstream in(scratch.run({"/usr/bin/python3", VISTREL_PRINT_SAMPLES, out}).out);
    std::string width, height, mode, samples;
    if (!(in >> width >> height >> mode)) GTEST_SKIP() << "python3-pil is not installed";
    EXPECT_EQ(mode, "RGBA") << out;
    for (int sample; in >> sample;) samples += static_cast<char>(sample);
    EXPECT_EQ(samples, rgba) << out;
  }
}

TEST_F(Written, SamplesOfATiffAreScaled) {
  convert("in.pgm --phase mono --depth 16 -o out.tif");
  ASSERT_EQ(scratch.vistrel("convert out.tif --phase mono --depth 16 -o out.pgm").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), pgm(23, 17, 65535, [](uint32_t x, uint32_t y) {
              const uint32_t s = texture(x, y);
              return s * 16 + s / 256;
            }));
}

TEST_F(Written, Pam) {
  scratch.write("two.pgm", "P5\n2 1\n255\nab");
  convert("two.pgm --phase mono -o out.pam");
  EXPECT_EQ(scratch.read("out.pam"),
            "P7\nWIDTH 2\nHEIGHT 1\nDEPTH 1\nMAXVAL 255\nTUPLTYPE GRAYSCALE\nENDHDR\nab");
}

TEST_F(Written, RawIsTheLibrarysOutput) {
  scratch.write("two.pgm", pgm(2, 2, 4095, [](uint32_t x, uint32_t y) { return 256 * x + y + 2; }));
  convert("two.pgm --phase mono --depth 16 -o out.raw");
  EXPECT_EQ(scratch.read("out.raw"), std::string("\2\0\2\1\3\0\3\1", 8));
  convert("in.pgm --phase rggb -o out.bin");
  convert("in.pgm --phase rggb -o out.ppm");
  std::string bgr = scratch.read("out.ppm").substr(13);  // P6, 23 17, 255
  for (size_t i = 0; i + 2 < bgr.size(); i += 3) std::swap(bgr[i], bgr[i + 2]);
  EXPECT_EQ(scratch.read("out.bin"), bgr);
}

TEST_F(Written, StandardOutput) {
  convert("in.pgm --phase rggb -o out.ppm");
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb -o -").out, scratch.read("out.ppm"));
  convert("in.pgm --phase rggb -o out.tif");
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb -o tif:-").out, scratch.read("out.tif"));
  const Finished full = scratch.vistrel("convert in.pgm --phase rggb -o -",
                                        [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
  EXPECT_EQ(full.status, 4);
  EXPECT_EQ(full.err,
            "vistrel: in.pgm: standard output cannot be written: No space left on device\n");
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb -o gif:-").status, 2);
}

}  // namespace
}  // namespace vistrel
