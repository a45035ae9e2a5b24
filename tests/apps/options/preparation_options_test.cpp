// --black, --wb, --edges and --format, compared with numbers worked out by hand.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <utility>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

// Red 41, green 70, blue 100 under RGGB filters.
struct Preparation : ::testing::Test {
  Scratch scratch;

  Preparation() {
    scratch.write("in.pgm", pgm(9, 7, 255, [](uint32_t x, uint32_t y) {
                    return x % 2 != y % 2 ? 70u : x % 2 ? 100u : 41u;
                  }));
  }

  Picture convert(const std::string& options) const {
    const Finished result = scratch.vistrel("convert in.pgm -o out.png --phase rggb " + options);
    EXPECT_EQ(result.err, "") << options;
    return readPng(scratch / "out.png");
  }
  // The picture's colour; empty if there are several.
  static std::vector<uint16_t> plain(const Picture& p) {
    for (size_t i = 3; i < p.samples.size(); ++i)
      if (p.samples[i] != p.samples[i - 3]) return {};
    return {p.samples.begin(), p.samples.begin() + 3};
  }
};

TEST_F(Preparation, BlackIsSubtracted) {
  EXPECT_THAT(plain(convert("")), ElementsAre(41, 70, 100));
  EXPECT_THAT(plain(convert("--black 0")), ElementsAre(41, 70, 100));
  EXPECT_THAT(plain(convert("--black 50")), ElementsAre(0, 20, 50));
}

// (41 - 10) * 1.25 = 38.75, (70 - 10) * 2, (100 - 10) * 1.5.
TEST_F(Preparation, GainsMultiply) {
  EXPECT_THAT(plain(convert("--black 10 --wb 1.25,2,1.5")), ElementsAre(39, 120, 135));
  EXPECT_THAT(plain(convert("--wb 16,0.5,1")), ElementsAre(255, 35, 100));
}

TEST_F(Preparation, AutoMakesColoursEqual) {
  const Finished result =
      scratch.vistrel("convert in.pgm -o out.png --phase rggb --black 10 --wb auto --json");
  EXPECT_THAT(plain(readPng(scratch / "out.png")), ElementsAre(90, 90, 90));
  // 90 / 31, 90 / 60 and 1 in 4096th.
  EXPECT_EQ(result.err,
            "vistrel: in.pgm: --wb auto: the gains are --wb 2.9033,1.5000,1.0000\n"
            "vistrel: in.pgm: --wb auto: only 63 samples count; 256 or more are reliable\n");
  const auto output = nlohmann::json::parse(result.out)["inputs"][0]["outputs"][0];
  EXPECT_EQ(output["gains"], (nlohmann::json{11892. / 4096, 1.5, 1.}));
  EXPECT_THAT(plain(convert("--black 10 --wb 2.9033,1.5000,1.0000")), ElementsAre(90, 90, 90));
}

TEST_F(Preparation, PaddedEdgesKeepThePlainColour) {
  EXPECT_TRUE(plain(convert("-a laroche")).empty()) << "this algorithm tints the border";
  EXPECT_TRUE(plain(convert("-a laroche --edges native")).empty());
  EXPECT_THAT(plain(convert("-a laroche --edges padded")), ElementsAre(41, 70, 100));
  EXPECT_THAT(plain(convert("-a laroche --edges padded --bin 2")), ElementsAre(82, 140, 200));
}

TEST_F(Preparation, HeaderlessFilesHaveEveryOrder) {
  const std::string r = ")", g = "F", b = "d", a = "\xFF";  // 41, 70, 100, 255
  const std::pair<std::string, std::string> pixels[] = {
      {"", b + g + r},         {"bgr24", b + g + r},    {"rgb24", r + g + b},
      {"bgra", b + g + r + a}, {"rgba", r + g + b + a}, {"argb", a + r + g + b},
      {"gray8", "A"},  // 0.299 * 41 + 0.587 * 70 + 0.114 * 100 = 64.749
  };
  for (const auto& [format, pixel] : pixels) {
    const std::string option = format.empty() ? "" : " --format " + format;
    const Finished result = scratch.vistrel("convert in.pgm --phase rggb -o out.raw" + option);
    EXPECT_EQ(result.err, "");
    std::string expected;
    for (int i = 0; i < 9 * 7; ++i) expected += pixel;
    EXPECT_EQ(scratch.read("out.raw"), expected) << format;
    std::filesystem::remove(scratch / "out.raw");
  }
}

// Twelve bits: 0x234, 0x567 and 0x89A, little-endian.
TEST_F(Preparation, HeaderlessFilesKeepAllBitsInEitherOrder) {
  scratch.write("in.pgm", pgm(9, 7, 4095, [](uint32_t x, uint32_t y) {
                  return x % 2 != y % 2 ? 0x567u : x % 2 ? 0x89Au : 0x234u;
                }));
  const std::string r = "\x34\x02", g = "\x67\x05", b = "\x9A\x08";
  for (const auto& [format, pixel] : {std::pair{"rgb48", r + g + b}, {"bgr48", b + g + r}}) {
    const std::string command = "convert in.pgm --phase rggb -o out.raw --format ";
    EXPECT_EQ(scratch.vistrel(command + format).err, "");
    std::string expected;
    for (int i = 0; i < 9 * 7; ++i) expected += pixel;
    EXPECT_EQ(scratch.read("out.raw"), expected) << format;
    std::filesystem::remove(scratch / "out.raw");
  }
}

// Of 10 x 10 blocks, 40 have a sample that reaches 200.
TEST_F(Preparation, BalanceSaysIfFewSamplesCount) {
  scratch.write("big.pgm",
                pgm(20, 20, 255, [](uint32_t x, uint32_t) { return x < 12 ? 90 : 200; }));
  const auto notes = [&](const std::string& options) {
    const Finished result =
        scratch.vistrel("convert big.pgm --phase rggb -o out.png --wb " + options);
    return result.err.substr(result.err.find('\n') + 1);
  };
  EXPECT_EQ(notes("auto"), "");
  EXPECT_EQ(notes("auto --white 201"), "");
  EXPECT_EQ(notes("auto --white 200"),
            "vistrel: big.pgm: --wb auto: only 240 samples count; 256 or more are reliable\n");
  EXPECT_EQ(notes("auto:5x3+1+1"),
            "vistrel: big.pgm: --wb auto: only 15 samples count; 256 or more are reliable\n");
  EXPECT_EQ(scratch.vistrel("convert big.pgm --phase rggb -o out.png --wb auto:0x0+0+0").err,
            "vistrel: --wb auto:0x0+0+0: it is empty\n");
}

TEST_F(Preparation, IsRejectedIfItExceedsTheFrame) {
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase rggb --black 256 -o out.png").err,
            "vistrel: in.pgm: --black 256: samples of 8 bits allow 0 to 255\n");
  const Finished mono = scratch.vistrel("convert in.pgm --phase mono --wb auto -o out.png");
  EXPECT_EQ(mono.status, 3);
  EXPECT_EQ(mono.err, "vistrel: in.pgm: --wb auto: a mono frame has no colours\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.pgm"});
}

}  // namespace
}  // namespace vistrel
