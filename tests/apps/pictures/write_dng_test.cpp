// Raw frames written as DNG: our reader and other programs find the same samples and tags.
#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <tiffio.h>
#include <unistd.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "apps/error.h"
#include "apps/pictures/raw_frame.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

using app::AtomicFile;
using app::DngCamera;

constexpr uint32_t kDngWidth = 61, kDngHeight = 43;

uint32_t grain(uint32_t x, uint32_t y, uint32_t bits) {
  return (x * x * 31 + y * 4099 + (x ^ y) * 257) & ((1u << bits) - 1);
}

std::vector<uint16_t> grains(uint32_t bits) {
  std::vector<uint16_t> samples;
  for (uint32_t y = 0; y < kDngHeight; ++y)
    for (uint32_t x = 0; x < kDngWidth; ++x)
      samples.push_back(static_cast<uint16_t>(grain(x, y, bits)));
  return samples;
}

// The samples as big-endian words.
std::string grainWords(uint32_t bits) {
  std::string words;
  for (const uint16_t sample : grains(bits)) {
    words += static_cast<char>(sample >> 8);
    words += static_cast<char>(sample);
  }
  return words;
}

struct Dng : ::testing::Test {
  Scratch scratch;

  // Writes the samples as in.dng.
  void write(uint32_t bits, const DngCamera& camera) const {
    AtomicFile file(scratch / "in.dng");
    app::writeDng(app::monoImage(grains(bits), kDngWidth, bits), {.camera = camera}, file);
    file.commit();
  }
  bool has(const std::string& tool) const {
    return scratch.run({"sh", "-c", "command -v " + tool}).status == 0;
  }
  nlohmann::json info(const std::string& name) const {
    const Finished result = scratch.vistrel("info --json " + name);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.status ? nlohmann::json() : nlohmann::json::parse(result.out);
  }
};

const DngCamera kCamera{.phase = VISTREL_GBRG,
                        .white = 3900,
                        .black = {60, 64, 66, 71},
                        .model = "Camera of a test",
                        .neutral = {{0.5, 1, 0.75}},
                        .matrix = {1.25, -0.5, 0.125, -0.25, 1.5, 0.0625, 0, 0.375, 0.625},
                        .illuminant = 17,  // standard light A
                        .orientation = 6};

TEST_F(Dng, OurReaderFindsTheFrame) {
  constexpr uint32_t kPhases[] = {VISTREL_GRBG, VISTREL_BGGR, VISTREL_RGGB, VISTREL_GBRG};
  for (uint32_t bits = 8; bits <= 16; ++bits) {
    const uint32_t phase = kPhases[bits % 4];
    write(bits, app::unknownCamera(phase, bits));
    const auto description = info("in.dng");
    EXPECT_EQ(description["format"], "DNG");
    EXPECT_EQ(description["phase"], vistrel_phase_name(phase));
    EXPECT_EQ(description["bits"], bits);
    EXPECT_EQ(description["black_level"], nullptr);
    EXPECT_EQ(description["white_level"], (1u << bits) - 1);
    const std::string depth = bits > 8 ? " --depth 16" : "";
    EXPECT_EQ(scratch.vistrel("convert in.dng --phase mono -o out.pgm" + depth).status, 0);
    EXPECT_EQ(scratch.read("out.pgm"),
              pgm(kDngWidth, kDngHeight, (1u << bits) - 1,
                  [bits](uint32_t x, uint32_t y) { return grain(x, y, bits); }));
  }
}

TEST_F(Dng, OurReaderFindsTheLevels) {
  write(12, kCamera);
  const auto description = info("in.dng");
  EXPECT_EQ(description["phase"], "gbrg");
  EXPECT_EQ(description["bits"], 12);
  EXPECT_EQ(description["black_level"], nlohmann::json({60, 64, 66, 71}));
  EXPECT_EQ(description["white_level"], 3900);
  EXPECT_EQ(description["orientation"], 6);
}

struct Tags {
  std::unique_ptr<TIFF, void (*)(TIFF*)> tiff;

  explicit Tags(const std::filesystem::path& path) : tiff(TIFFOpen(path.c_str(), "r"), TIFFClose) {}

  // The value of a tag that is an array; empty if the tag is missing.
  template <class T>
  std::vector<T> list(uint32_t tag) const {
    uint16_t count = 0;
    const T* values = nullptr;
    if (!TIFFGetField(tiff.get(), tag, &count, &values)) return {};
    return {values, values + count};
  }
  // The same of an array of fixed length.
  template <class T>
  std::vector<T> list(uint32_t tag, size_t count) const {
    const T* values = nullptr;
    if (!TIFFGetField(tiff.get(), tag, &values)) return {};
    return {values, values + count};
  }
  uint32_t number(uint32_t tag) const {
    uint16_t value = 0;
    EXPECT_TRUE(TIFFGetField(tiff.get(), tag, &value)) << tag;
    return value;
  }
};

TEST_F(Dng, SaysEverythingAboutTheCamera) {
  write(12, kCamera);
  const Tags tags(scratch / "in.dng");
  ASSERT_TRUE(tags.tiff);
  using Bytes = std::vector<uint8_t>;
  using Reals = std::vector<float>;
  EXPECT_EQ(tags.list<uint8_t>(TIFFTAG_DNGVERSION, 4), (Bytes{1, 4, 0, 0}));
  EXPECT_EQ(tags.list<uint8_t>(TIFFTAG_DNGBACKWARDVERSION, 4), (Bytes{1, 1, 0, 0}));
  EXPECT_EQ(tags.list<uint8_t>(TIFFTAG_CFAPATTERN), (Bytes{1, 2, 0, 1}));  // GB/RG
  EXPECT_EQ(tags.list<uint8_t>(TIFFTAG_CFAPLANECOLOR), (Bytes{0, 1, 2}));
  EXPECT_EQ(tags.list<uint16_t>(TIFFTAG_CFAREPEATPATTERNDIM, 2), (std::vector<uint16_t>{2, 2}));
  EXPECT_EQ(tags.list<uint16_t>(TIFFTAG_BLACKLEVELREPEATDIM, 2), (std::vector<uint16_t>{2, 2}));
  EXPECT_EQ(tags.list<float>(TIFFTAG_BLACKLEVEL), (Reals{60, 64, 66, 71}));
  EXPECT_EQ(tags.list<uint32_t>(TIFFTAG_WHITELEVEL), (std::vector<uint32_t>{3900}));
  EXPECT_EQ(tags.list<float>(TIFFTAG_ASSHOTNEUTRAL), (Reals{0.5, 1, 0.75}));
  EXPECT_EQ(tags.list<float>(TIFFTAG_COLORMATRIX1),
            (Reals{1.25, -0.5, 0.125, -0.25, 1.5, 0.0625, 0, 0.375, 0.625}));
  EXPECT_EQ(tags.list<uint32_t>(TIFFTAG_ACTIVEAREA, 4),
            (std::vector<uint32_t>{0, 0, kDngHeight, kDngWidth}));
  EXPECT_EQ(tags.list<float>(TIFFTAG_DEFAULTCROPORIGIN, 2), (Reals{0, 0}));
  EXPECT_EQ(tags.list<float>(TIFFTAG_DEFAULTCROPSIZE, 2), (Reals{kDngWidth, kDngHeight}));
  EXPECT_EQ(tags.number(TIFFTAG_CALIBRATIONILLUMINANT1), 17u);
  EXPECT_EQ(tags.number(TIFFTAG_CFALAYOUT), 1u);
  EXPECT_EQ(tags.number(TIFFTAG_ORIENTATION), 6u);
  const char* model = nullptr;
  ASSERT_TRUE(TIFFGetField(tags.tiff.get(), TIFFTAG_UNIQUECAMERAMODEL, &model));
  EXPECT_STREQ(model, "Camera of a test");
}

// The matrix undoes the published one from linear sRGB to XYZ, and no neutral is made up.
TEST_F(Dng, ColoursOfAnUnknownCameraAreSrgb) {
  constexpr double kXyzOfSrgb[3][3] = {
      {0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}};
  write(10, app::unknownCamera(VISTREL_RGGB, 10));
  const Tags tags(scratch / "in.dng");
  const std::vector<float> matrix = tags.list<float>(TIFFTAG_COLORMATRIX1);
  ASSERT_EQ(matrix.size(), 9u);
  for (size_t row = 0; row < 3; ++row)
    for (size_t column = 0; column < 3; ++column) {
      double sum = 0;
      for (size_t k = 0; k < 3; ++k)
        sum += static_cast<double>(matrix[3 * row + k]) * kXyzOfSrgb[k][column];
      EXPECT_NEAR(sum, row == column, 0.0003) << row << column;
    }
  EXPECT_TRUE(tags.list<float>(TIFFTAG_ASSHOTNEUTRAL).empty());
  EXPECT_EQ(tags.number(TIFFTAG_CALIBRATIONILLUMINANT1), 0u);
}

TEST_F(Dng, DcrawAndLibRawReadTheSameSamples) {
  const bool dcraw = has("dcraw"), libraw = has("unprocessed_raw");
  if (!dcraw && !libraw) GTEST_SKIP() << "neither dcraw nor libraw-bin is installed";
  for (const uint32_t bits : {8u, 10u, 12u, 16u}) {
    DngCamera camera = app::unknownCamera(VISTREL_BGGR, bits);
    camera.black = {3, 5, 8, 2};
    write(bits, camera);
    const std::string words = grainWords(bits);
    const auto lastOf = [&words](const std::string& file) {
      return file.size() < words.size() ? file : file.substr(file.size() - words.size());
    };
    if (dcraw) {
      EXPECT_EQ(lastOf(scratch.run({"dcraw", "-D", "-4", "-c", "in.dng"}).out), words) << bits;
    }
    if (libraw) {
      EXPECT_EQ(scratch.run({"unprocessed_raw", "in.dng"}).status, 0) << bits;
      EXPECT_EQ(lastOf(scratch.read("in.dng.pgm")), words) << bits;
    }
  }
}

TEST_F(Dng, LibRawFindsTheTags) {
  if (!has("raw-identify")) GTEST_SKIP() << "libraw-bin is not installed";
  write(12, kCamera);
  const std::string text = scratch.run({"raw-identify", "-v", "in.dng"}).out;
  for (const char* const line :
       {"UniqueCameraModel: =Camera of a test=", "DNG Version: 1.4.0.0",
        "Filter pattern: GBRGGBRGGBRGGBRG", "cblack[6 .. 9]: 60 64 66 71",
        "As shot                   2 1 1.33333", "DNG Illuminant 1: Illuminant A",
        "1.2500\t-0.5000\t0.1250\n-0.2500\t1.5000\t0.0625\n0.0000\t0.3750\t0.6250"})
    EXPECT_NE(text.find(line), text.npos) << line << " is not in\n" << text;
}

TEST_F(Dng, ValidatorsFindNoFault) {
  const bool exiftool = has("exiftool"), tiffinfo = has("tiffinfo");
  if (!exiftool && !tiffinfo) GTEST_SKIP() << "neither exiftool nor tiffinfo is installed";
  for (const uint32_t bits : {8u, 14u}) {
    write(bits, app::unknownCamera(VISTREL_RGGB, bits));
    if (exiftool) {
      const std::vector<std::string> validate{"exiftool", "-validate", "-warning", "-error",
                                              "-a",       "-s3",       "in.dng"};
      EXPECT_EQ(scratch.run(validate).out, "OK\n") << bits;
    }
    if (tiffinfo) {
      EXPECT_EQ(scratch.run({"tiffinfo", "-D", "in.dng"}).err, "") << bits;
    }
  }
}

const std::string kNotes =
    "vistrel: out.dng: the camera's colour matrix is unknown; using that of sRGB\n"
    "vistrel: out.dng: many programs reject raw frames below 22x22; this one is 2x2\n";

TEST_F(Dng, Unpack) {
  scratch.write("in.raw", "\x23\x61\x45\x89\xC7\xAB");  // 0x123, 0x456, 0x789, 0xABC
  const std::string unpack = "unpack in.raw -s 2x2 -o ";
  EXPECT_EQ(scratch.vistrel(unpack + "out.dng --pixfmt BayerGR12p").err, kNotes);
  const auto description = info("out.dng");
  EXPECT_EQ(description["phase"], "grbg");
  EXPECT_EQ(description["bits"], 12);
  EXPECT_EQ(scratch.vistrel("convert out.dng --phase mono --depth 16 -o out.pgm").status, 0);
  const uint32_t samples[] = {0x123, 0x456, 0x789, 0xABC};
  EXPECT_EQ(scratch.read("out.pgm"),
            pgm(2, 2, 4095, [&](uint32_t x, uint32_t y) { return samples[2 * y + x]; }));
  EXPECT_EQ(scratch.vistrel(unpack + "dng:- --pixfmt BayerGR12p").out, scratch.read("out.dng"));
}

// A DNG must have a matrix; that of an unknown camera decides nothing.
TEST_F(Dng, DevelopsLikeTheFrameThatItIsMadeOf) {
  scratch.write("in.pgm", pgm(64, 48, 4095, [](uint32_t x, uint32_t y) {
                  return 250 + (x * 31 + y * 17) % 997 * (1 + (x + y) % 2);
                }));
  const auto lookOf = [&](const std::string& name) {
    const auto text =
        scratch.vistrel("develop --json --phase rggb -o " + name + ".png " + name).out;
    return nlohmann::json::parse(text)["inputs"][0]["outputs"][0]["look"];
  };
  const nlohmann::json look = lookOf("in.pgm");
  EXPECT_GT(look["black"][0], 200);
  for (const std::string command : {"unpack", "convert --mosaic"}) {
    const Finished made = scratch.vistrel(command + " in.pgm --phase rggb -o out.dng");
    ASSERT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(lookOf("out.dng"), look) << command;
  }
}

TEST_F(Dng, UnpackTakesOneFrameWithColours) {
  scratch.write("in.raw", "abcdefgh");
  const std::string unpack = "unpack in.raw -s 2x2 -o out.dng --pixfmt ";
  const Finished mono = scratch.vistrel(unpack + "GREY --frame 0");
  EXPECT_EQ(mono.status, 3);
  EXPECT_EQ(
      mono.err,
      "vistrel: in.raw: a .dng needs colour filters; mono goes to .pgm, .png, .npy or .raw\n");
  const Finished two = scratch.vistrel(unpack + "RGGB");
  EXPECT_EQ(two.status, 3);
  EXPECT_NE(two.err.find("it has 2 frames: out.dng takes one"), two.err.npos) << two.err;
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.raw"});
  EXPECT_EQ(scratch.vistrel(unpack + "RGGB --frame 1").err, kNotes);
  EXPECT_EQ(scratch.vistrel("convert out.dng --phase mono -o out.pgm").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), "P5\n2 2\n255\nefgh");
}

TEST_F(Dng, Mosaic) {
  scratch.write("in.ppm", "P6 2 2 255\nabcdefghijkl");
  EXPECT_EQ(scratch.vistrel("mosaic in.ppm -o out.dng --phase bggr").err, kNotes);
  EXPECT_EQ(info("out.dng")["phase"], "bggr");
  EXPECT_EQ(scratch.vistrel("convert out.dng --phase mono -o out.pgm").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), "P5\n2 2\n255\ncehj");
  EXPECT_EQ(scratch.vistrel("mosaic in.ppm -o out.dng --pixfmt RGGB").err,
            "vistrel: -o out.dng: --pixfmt writes a headerless raw file, not a .dng\n");
}

// Everything that a DNG says is in the copy, and other programs read the same samples.
TEST_F(Dng, ConvertKeepsTheMosaic) {
  write(12, kCamera);
  EXPECT_EQ(scratch.vistrel("convert in.dng --mosaic -o out.dng").err, "");
  nlohmann::json before = info("in.dng"), after = info("out.dng");
  EXPECT_EQ(before["file"], "in.dng");
  EXPECT_EQ(after["file"], "out.dng");
  before.erase("file");
  after.erase("file");
  EXPECT_EQ(before["black_level"], nlohmann::json({60, 64, 66, 71}));
  EXPECT_EQ(after, before);
  const std::string words = grainWords(12);
  const auto lastOf = [&words](const std::string& file) {
    return file.size() < words.size() ? file : file.substr(file.size() - words.size());
  };
  EXPECT_EQ(scratch.vistrel("convert in.dng --mosaic -o out.pgm").err, "");
  EXPECT_EQ(lastOf(scratch.read("out.pgm")), words);
  if (has("dcraw")) {
    EXPECT_EQ(lastOf(scratch.run({"dcraw", "-D", "-4", "-t", "0", "-c", "out.dng"}).out), words);
  }
  if (has("unprocessed_raw")) {
    EXPECT_EQ(scratch.run({"unprocessed_raw", "out.dng"}).status, 0);
    EXPECT_EQ(lastOf(scratch.read("out.dng.pgm")), words);
  }
}

TEST_F(Dng, ConvertMakesOneOfEveryFrame) {
  scratch.write("in.raw", "abcdefgh");
  std::filesystem::create_directory(scratch / "out");
  const std::string convert = "convert in.raw -s 2x2 --pixfmt RGGB --mosaic ";
  const Finished made = scratch.vistrel(convert + "--type dng -o out");
  EXPECT_EQ(made.status, 0) << made.err;
  EXPECT_EQ(made.err,
            "vistrel: in.raw: the camera's colour matrix is unknown; using that of sRGB\n"
            "vistrel: in.raw: many programs reject raw frames below 22x22; this one is 2x2\n");
  EXPECT_EQ(scratch.vistrel("unpack out/in_000001.dng -o out.raw").err, "");
  EXPECT_EQ(scratch.read("out.raw"), "efgh");
  EXPECT_EQ(scratch.vistrel(convert + "--frame 1 -o - --wb 2,1,2").err,
            "vistrel: --mosaic and --wb 2,1,2 cannot be combined: samples stay as they are\n");
  EXPECT_EQ(scratch.vistrel(convert + "--frame 1 -o out.tif").err,
            "vistrel: -o out.tif: a raw frame is a .dng, .pgm, .png, .npy or .raw\n");
  EXPECT_EQ(scratch.vistrel("convert in.raw -s 2x2 --pixfmt RGGB --frame 0 -o out.dng").err,
            "vistrel: demosaicing and -o out.dng cannot be combined: a .dng holds a raw frame; "
            "--mosaic writes one\n");
}

TEST_F(Dng, ThePhaseMustBeKnown) {
  scratch.write("in.raw", "abcd");
  const std::string unpack = "unpack in.raw -s 2x2 --bits 8 -o out.dng";
  EXPECT_EQ(scratch.vistrel(unpack).err,
            "vistrel: in.raw: --phase is missing: a .dng names the colours of the 2x2 block\n");
  EXPECT_EQ(scratch.vistrel(unpack + " --phase gbrg").err, kNotes);
  EXPECT_EQ(info("out.dng")["phase"], "gbrg");
}

// The sizes are those of LibRaw.
TEST_F(Dng, SmallFramesAreRemarked) {
  const bool hasPlugin = std::filesystem::exists(VISTREL_PLUGIN);
  for (const auto& [width, height] : {std::pair{21, 40}, {40, 21}, {22, 22}}) {
    const std::string size = std::to_string(width) + "x" + std::to_string(height);
    scratch.write("in.raw", std::string(static_cast<size_t>(width * height), 'a'));
    const Finished made = scratch.vistrel("unpack in.raw -s " + size + " --pixfmt RGGB -o out.dng");
    const bool isRemarked = made.err.find("below 22x22; this one is " + size) != made.err.npos;
    EXPECT_EQ(isRemarked, width + height > 44) << made.err;
    std::filesystem::rename(scratch / "out.dng", scratch / "out.nef");
    if (hasPlugin) {
      EXPECT_EQ(scratch.vistrel("info out.nef").status, isRemarked ? 3 : 0);
    }
  }
}

TEST_F(Dng, TooLargeIsRejected) {
  Image image;  // whose pixels are not looked at
  image.layout = {50000, 41000, 1, 16, 100000, 4100000000, 0, 0, {}};
  const app::PictureDetails details{.camera = app::unknownCamera(VISTREL_RGGB, 16)};
  const app::Outcome outcome =
      app::attempt([&] { app::savePicture(image, details, scratch / "out.dng"); });
  EXPECT_EQ(outcome.status, app::kRejected);
  EXPECT_EQ(outcome.text,
            "50000x41000 samples of 16 bits: a .dng holds at most 4026531840 bytes of samples");
}

TEST_F(Dng, AppearsCompleteOrNotAtAll) {
  scratch.write("in.raw", std::string(64 * 64, 'x'));
  const Finished full = scratch.vistrel("unpack in.raw -s 64x64 --pixfmt RGGB -o dng:-",
                                        [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
  EXPECT_EQ(full.status, 4);
  EXPECT_EQ(full.err, "vistrel: in.raw: dng:- cannot be written: No space left on device\n");
  const Finished cut =
      scratch.run({"sh", "-c", "ulimit -f 1; exec \"$0\" \"$@\"", VISTREL_PROGRAM, "unpack",
                   "in.raw", "-s", "64x64", "--pixfmt", "RGGB", "-o", "out.dng"});
  EXPECT_EQ(cut.status, 4);
  EXPECT_EQ(cut.err, "vistrel: in.raw: out.dng cannot be written: File too large\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.raw"});
}

}  // namespace
}  // namespace vistrel
