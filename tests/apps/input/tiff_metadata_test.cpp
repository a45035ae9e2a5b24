// What files say about their camera: read from every kind, shown by info, named by convert.
#include <gtest/gtest.h>

#include <tiffio.h>

#include <nlohmann/json.hpp>

#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/tiff_file.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

using Json = nlohmann::json;

// The published matrix from XYZ to linear sRGB, of IEC 61966-2-1.
const std::vector<float> kSrgb{3.2406f, -1.5372f, -0.4986f, -0.9689f, 1.8758f,
                               0.0415f, 0.0557f,  -0.2040f, 1.0570f};

struct Metadata : ::testing::Test {
  Scratch scratch;
  TiffSpec spec;

  Metadata() {
    spec.width = 12;
    spec.height = 8;
    spec.cfa = {0, 1, 1, 2};
    spec.isDng = true;
  }
  void write(const std::string& name = "in.dng") const {
    writeTiff(scratch / name, spec, [](uint32_t x, uint32_t y) { return 100 + 10 * x + y; });
  }
  Json info(const std::string& name, const std::string& warning = "") const {
    const Finished result = scratch.vistrel("info --json " + name);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, warning.empty() ? "" : "vistrel: " + name + ": " + warning + "\n");
    return result.status ? Json() : Json::parse(result.out);
  }
  Json dng(const std::string& warning = "") const {
    write();
    return info("in.dng", warning);
  }
  // Of a FITS file with these cards.
  Json fitsInfo(const std::vector<std::pair<const char*, const char*>>& more) const {
    auto header = cards(8, {"2", "2"});
    for (const auto& [key, value] : more) header.push_back(card(key, value));
    scratch.write("in.fits", fits(header, "abcd"));
    return info("in.fits");
  }
};

void setAllTags(TiffSpec& s) {
  s.black = 96;
  s.white = 4000;
  s.orientation = 6;
  s.camera.rationals = {{TIFFTAG_ASSHOTNEUTRAL, {0.5f, 1, 0.625f}},
                        {TIFFTAG_ANALOGBALANCE, {0.5f, 1, 0.625f}},
                        {TIFFTAG_COLORMATRIX1, kSrgb},
                        {TIFFTAG_COLORMATRIX2, kSrgb},
                        {TIFFTAG_CAMERACALIBRATION2, {1, 0, 0, 0, 1, 0, 0, 0, 1}}};
  s.camera.codes = {{TIFFTAG_CALIBRATIONILLUMINANT1, 17}, {TIFFTAG_CALIBRATIONILLUMINANT2, 21}};
  s.camera.numbers = {{TIFFTAG_BASELINEEXPOSURE, -0.5}};
  s.camera.texts = {{TIFFTAG_MAKE, " Maker "},
                    {TIFFTAG_MODEL, "Model 1"},
                    {TIFFTAG_DATETIME, "2026:11:22 18:06:29"}};
  s.frame.pairs = {{TIFFTAG_DEFAULTCROPORIGIN, {2, 1}}, {TIFFTAG_DEFAULTCROPSIZE, {8, 6}}};
}

TEST_F(Metadata, AllTagsOfADng) {
  setAllTags(spec);
  for (const bool below : {false, true})
    for (const char* const mode : {"wl", "wb"}) {
      spec.inSubdirectory = below;
      spec.mode = mode;
      const Json json = dng();
      EXPECT_EQ(json["black_level"], (Json{96, 96, 96, 96}));
      EXPECT_EQ(json["white_level"], 4000);
      EXPECT_EQ(json["neutral"], (Json{0.5, 1, 0.625}));
      EXPECT_EQ(json["analog_balance"], (Json{0.5, 1, 0.625}));
      const Json matrix{3.2406, -1.5372, -0.4986, -0.9689, 1.8758, 0.0415, 0.0557, -0.2040, 1.0570};
      const Json one{1, 0, 0, 0, 1, 0, 0, 0, 1};
      EXPECT_EQ(json["calibrations"],
                (Json{{{"temperature", 2856}, {"from_xyz", matrix}, {"individual", one}},
                      {{"temperature", 6504}, {"from_xyz", matrix}, {"individual", one}}}));
      EXPECT_EQ(json["gains"], (Json{2, 1, 6554 / 4096.0}));
      EXPECT_NEAR(json["temperature"], 6505, 2);
      EXPECT_EQ(json["orientation"], 6);
      EXPECT_EQ(json["crop"], (Json{{"x", 2}, {"y", 1}, {"width", 8}, {"height", 6}}));
      EXPECT_EQ(json["baseline_exposure"], -0.5);
      EXPECT_EQ(json["make"], "Maker");
      EXPECT_EQ(json["model"], "Model 1");
      EXPECT_EQ(json["date"], "2026-11-22T18:06:29");
      ASSERT_EQ(json["camera_to_srgb"].size(), 9u);
      for (size_t i = 0; i < 9; ++i)  // the published matrix has four decimals
        EXPECT_NEAR(json["camera_to_srgb"][i], i % 4 ? 0 : 1, 0.0005) << i;
    }
}

TEST_F(Metadata, WithoutTagsAllIsNull) {
  const Json json = dng();
  for (const char* const key :
       {"black_level", "white_level", "neutral", "white_xy", "analog_balance", "temperature",
        "gains", "camera_to_srgb", "orientation", "crop", "make", "model", "date", "exposure_time",
        "iso", "gain", "aperture", "focal_length", "baseline_exposure"})
    EXPECT_TRUE(json.at(key).is_null()) << key;
  EXPECT_EQ(json.at("calibrations"), Json::array());
}

TEST_F(Metadata, BlackLevelOfEachPlace) {
  const auto expect = [this](std::array<uint16_t, 2> size, std::vector<float> levels,
                             const Json& black) {
    spec.blackSize = size;
    spec.frame.rationals[TIFFTAG_BLACKLEVEL] = levels;
    for (const char* const mode : {"wl", "wb"}) {
      spec.mode = mode;
      EXPECT_EQ(dng()["black_level"], black);
    }
  };
  expect({0, 0}, {64.25}, {64.25, 64.25, 64.25, 64.25});
  expect({1, 1}, {64}, {64, 64, 64, 64});
  expect({2, 1}, {64, 66}, {64, 64, 66, 66});
  expect({1, 2}, {64, 66}, {64, 66, 64, 66});
  expect({2, 2}, {64, 65, 66, 67}, {64, 65, 66, 67});
  // Larger patterns: the mean of what falls on each place.
  expect({1, 4}, {10, 20, 30, 60}, {20, 40, 20, 40});
  expect({4, 2}, {1, 2, 3, 4, 5, 6, 7, 8}, {3, 4, 5, 6});
  expect({3, 1}, {10, 20, 60}, {30, 30, 30, 30});
  expect({2, 3}, {3, 6, 9, 0, 0, 3}, {6, 6, 1, 1});
}

TEST_F(Metadata, BlackLevelDeltasAreAddedAsMeans) {
  spec.black = 64;
  spec.frame.rationals[TIFFTAG_BLACKLEVELDELTAH] = {0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1};
  spec.frame.rationals[TIFFTAG_BLACKLEVELDELTAV] = {-2, -2, -2, -2, -2, -2, -4, 0};
  EXPECT_EQ(dng()["black_level"], (Json{62.5, 62.5, 62.5, 62.5}));
}

TEST_F(Metadata, LightInPlaceOfTheNeutral) {
  spec.camera.rationals = {{TIFFTAG_COLORMATRIX1, kSrgb}};
  spec.camera.pairs = {{TIFFTAG_ASSHOTWHITEXY, {0.3127f, 0.3290f}}};
  const Json json = dng();
  EXPECT_EQ(json["white_xy"], (Json{0.3127, 0.329}));
  for (const auto& gain : json["gains"]) EXPECT_NEAR(gain, 1, 0.0005);
  EXPECT_NEAR(json["temperature"], 6505.08, 0.01);
}

TEST_F(Metadata, ExposureOfAnExifDirectory) {
  spec.exif.numbers = {
      {EXIFTAG_EXPOSURETIME, 0.004}, {EXIFTAG_FNUMBER, 5.6}, {EXIFTAG_FOCALLENGTH, 35}};
  spec.exif.texts = {{EXIFTAG_DATETIMEORIGINAL, "2025:01:02 03:04:05"}};
  spec.isoSpeeds = {400};
  spec.camera.texts = {{TIFFTAG_DATETIME, "2026:11:22 18:06:29"}};
  const Json json = dng();
  EXPECT_EQ(json["exposure_time"], 0.004);
  EXPECT_EQ(json["aperture"], 5.6);
  EXPECT_EQ(json["focal_length"], 35);
  EXPECT_EQ(json["iso"], 400);
  EXPECT_EQ(json["date"], "2025-01-02T03:04:05");
}

TEST_F(Metadata, MalformedTags) {
  const auto expect = [this](uint32_t tag, std::vector<float> values, const std::string& warning,
                             const char* key) {
    TiffSpec whole = spec;
    (tag == TIFFTAG_BLACKLEVEL ? spec.frame : spec.camera).rationals[tag] = values;
    const Json json = dng(warning + "; not used");
    EXPECT_TRUE(json[key].is_null() || json[key].empty()) << key;
    spec = whole;
  };
  expect(TIFFTAG_ASSHOTNEUTRAL, {1, 1, 1, 1}, "TIFF: 4 values of AsShotNeutral, 3 are expected",
         "neutral");
  expect(TIFFTAG_ASSHOTNEUTRAL, {0, 1, 1},
         "neutral 0 1 1: its parts must be positive, none more than 16 times another", "neutral");
  expect(TIFFTAG_ANALOGBALANCE, {0, 1, 1}, "analog balance 0 1 1: its parts must be positive",
         "analog_balance");
  expect(TIFFTAG_COLORMATRIX1, std::vector<float>(12, 1),
         "TIFF: 12 values of ColorMatrix1, 9 are expected", "calibrations");
  expect(TIFFTAG_COLORMATRIX2, std::vector<float>(9, 1),
         "colour matrix 1 1 1 1 1 1 1 1 1: it has no inverse", "calibrations");
  expect(TIFFTAG_COLORMATRIX1, std::vector<float>(65535, 1),
         "TIFF: 65535 values of ColorMatrix1, 9 are expected", "calibrations");
  expect(TIFFTAG_BLACKLEVEL, {1, 2, 3, 4}, "TIFF: 4 values of BlackLevel, 1 are expected",
         "black_level");
  expect(TIFFTAG_BLACKLEVEL, {70000}, "black level 70000 70000 70000 70000: 0 to 65535 are allowed",
         "black_level");
  spec.frame.pairs = {{TIFFTAG_DEFAULTCROPSIZE, {13, 8}}};
  EXPECT_TRUE(dng("crop 13x8+0+0: it exceeds the frame, or is empty; not used")["crop"].is_null());
}

// libtiff itself drops such a value, whichever directory has it.
TEST_F(Metadata, OrientationThatDoesNotExist) {
  for (const bool inSubdirectory : {false, true})
    for (const char code : {char{0}, char{9}}) {
      spec.inSubdirectory = inSubdirectory;
      spec.orientation = 6;
      write();
      std::string bytes = scratch.read("in.dng");
      const std::string tag("\x12\x01\x03\0\x01\0\0\0\x06", 9);
      const size_t at = bytes.find(tag);
      ASSERT_NE(at, bytes.npos);
      bytes[at + tag.size() - 1] = code;
      scratch.write("in.dng", bytes);
      const Json json = info("in.dng", "TIFF: Bad value " + std::to_string(code) +
                                           " for \"Orientation\" tag; not used");
      EXPECT_TRUE(json["orientation"].is_null()) << json;
    }
}

// libtiff itself drops such values, and zeros stand for "unknown".
TEST_F(Metadata, UnknownValues) {
  spec.exif.numbers = {{EXIFTAG_EXPOSURETIME, 0}, {EXIFTAG_FNUMBER, 0}};
  spec.camera.texts = {{TIFFTAG_MAKE, "  "}, {TIFFTAG_DATETIME, "0000:00:00 00:00:00"}};
  const Json json = dng();
  for (const char* const key : {"exposure_time", "aperture", "make", "date"})
    EXPECT_TRUE(json[key].is_null()) << key;
}

TEST_F(Metadata, TextOfInfo) {
  setAllTags(spec);
  spec.blackSize = {2, 2};
  spec.black = -1;
  spec.frame.rationals[TIFFTAG_BLACKLEVEL] = {64, 64, 66, 64};
  write();
  const std::string out = scratch.vistrel("info in.dng").out;
  for (const char* const line :
       {"black level      64 64 66 64\n", "white level      4000\n",
        "neutral          0.5 1 0.625\n", "analog balance   0.5 1 0.625\n",
        "colour matrix    3.2406 -1.5372 -0.4986 -0.9689 1.8758 0.0415 0.0557 -0.204 1.057, at "
        "2856 K\n",
        "gains            2.0000 1.0000 1.6001\n", "crop             8x6+2+1\n",
        "orientation      6 (convert keeps the sensor's orientation)\n", "make             Maker\n",
        "model            Model 1\n", "date             2026-11-22T18:06:29\n",
        "baseline exp.    -0.5 stops\n"})
    EXPECT_NE(out.find(line), std::string::npos) << line << out;
}

TEST_F(Metadata, ConvertNamesWhatItLeavesUnused) {
  const auto note = [this](const std::string& options) {
    const Finished result = scratch.vistrel("convert in.dng -o out.ppm " + options);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.err;
  };
  write();
  EXPECT_EQ(note(""), "");
  const std::string plain = scratch.read("out.ppm");
  setAllTags(spec);
  write();
  const std::string end = ", which convert leaves unused; develop applies them\n";
  const std::string begin = "vistrel: in.dng: the file reports ";
  EXPECT_EQ(note(""), begin + "black 96, a neutral, a colour matrix and orientation 6" + end);
  EXPECT_EQ(scratch.read("out.ppm"), plain);
  EXPECT_EQ(note("--black 96 --wb auto").find(begin + "a colour matrix and orientation 6" + end),
            0u);
  spec.camera = {};
  spec.black = 0;
  write();
  EXPECT_EQ(note(""), begin + "orientation 6, which convert leaves unused; develop applies it\n");
  spec.orientation = 1;
  write();
  EXPECT_EQ(note(""), "");
}

TEST_F(Metadata, ConvertOfAMonoFrame) {
  setAllTags(spec);
  write();
  EXPECT_EQ(scratch.vistrel("convert in.dng --phase mono -o out.pgm").err,
            "vistrel: in.dng: using mono; the file says rggb\n"
            "vistrel: in.dng: the file reports black 96 and orientation 6, which convert leaves "
            "unused; develop applies them\n");
}

TEST_F(Metadata, Fits) {
  const Json json = fitsInfo({{"EXPTIME", "20.0"},
                              {"GAIN", "80"},
                              {"FOCALLEN", "250."},
                              {"INSTRUME", "'Camera 1'"},
                              {"DATE-OBS", "'2025-06-30T02:34:20.1'"}});
  EXPECT_EQ(json["exposure_time"], 20);
  EXPECT_EQ(json["gain"], 80);
  EXPECT_EQ(json["focal_length"], 250);
  EXPECT_EQ(json["model"], "Camera 1");
  EXPECT_EQ(json["date"], "2025-06-30T02:34:20");
}

// They are merely informative, so the frame is read anyway.
TEST_F(Metadata, FitsOfMalformedKeywords) {
  const Json json =
      fitsInfo({{"EXPTIME", "'long'"}, {"GAIN", "high"}, {"EXPOSURE", "-1."}, {"DATE-OBS", "5"}});
  for (const char* const key : {"exposure_time", "gain", "date"})
    EXPECT_TRUE(json[key].is_null()) << key;
}

// LibRaw goes by content, so a DNG may stand in for a camera raw file.
TEST_F(Metadata, CameraRaw) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  setAllTags(spec);
  spec.camera.rationals.erase(TIFFTAG_ANALOGBALANCE);
  spec.width = 64;
  spec.height = 48;
  spec.bits = 16;
  spec.black = -1;
  spec.blackSize = {2, 2};
  spec.frame.pairs.clear();
  spec.frame.rationals[TIFFTAG_BLACKLEVEL] = {64, 65, 66, 67};
  write("in.nef");
  const Json json = info("in.nef");
  EXPECT_EQ(json["black_level"], (Json{64, 65, 66, 67}));
  EXPECT_EQ(json["white_level"], 4000);
  for (size_t i = 0; i < 3; ++i)
    EXPECT_NEAR(json["neutral"][i], (std::array{0.5, 1.0, 0.625}[i]), 1e-6);
  EXPECT_EQ(json["orientation"], 6);
  EXPECT_EQ(json["make"], "Maker");
  EXPECT_EQ(json["model"], "Model 1");
  EXPECT_EQ(json["date"], "2026-11-22T18:06:29");
}

// A frame of 2048, half of what 12 bits hold: from there on, all differences are 0, whose code is a
// single 0 bit.
std::string losslessJpeg(uint8_t width, uint8_t height) {
  using namespace std::string_literals;
  const std::string sizes{'\0', static_cast<char>(height), '\0', static_cast<char>(width)};
  return "\xFF\xD8"s + "\xFF\xC4\0\x14\0\1"s + std::string(15, '\0') + '\0' +  // one code
         "\xFF\xC3\0\x0B\x0C"s + sizes + "\1\0\x11\0"s + "\xFF\xDA\0\x08\1\0\0\1\0\0"s +
         std::string(width * height / 8, '\0') + "\xFF\xD9"s;
}

// The plug-in decodes it; the tags are read as those of any DNG.
TEST_F(Metadata, CompressedDng) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  setAllTags(spec);
  spec.width = 64;
  spec.height = 48;
  write();
  const Json plain = info("in.dng");
  spec.compression = COMPRESSION_JPEG;
  spec.encoded = losslessJpeg(64, 48);
  const Json json = dng();
  EXPECT_EQ(json["format"], "camera raw");
  EXPECT_EQ(json["min"], 2048);
  EXPECT_EQ(json["max"], 2048);
  for (const char* const key : {"black_level", "white_level", "neutral", "calibrations", "gains",
                                "camera_to_srgb", "orientation", "crop", "baseline_exposure"})
    EXPECT_EQ(json[key], plain[key]) << key;
}

// The program takes the plug-in that lies beside it.
TEST_F(Metadata, AllFieldsOfThePlugin) {
  std::filesystem::copy_file(VISTREL_PROGRAM, scratch / "vistrel");
  std::filesystem::copy_file(VISTREL_STUB_PLUGIN, scratch / "vistrel-libraw.so");
  scratch.write("in.nef", "any");
  const Finished result = scratch.run({(scratch / "vistrel").string(), "info", "--json", "in.nef"});
  ASSERT_EQ(result.status, 0) << result.err;
  const Json json = Json::parse(result.out);
  EXPECT_EQ(json["phase"], "gbrg");
  EXPECT_EQ(json["black_level"], (Json{1, 2, 3, 4.5}));
  EXPECT_EQ(json["white_level"], 1000);
  EXPECT_EQ(json["neutral"], (Json{0.5, 1, 0.625}));
  const Json matrix{0.75, -0.125, -0.25, -0.5, 1.25, 0.25, -0.125, 0.25, 0.5};
  const Json one{1, 0, 0, 0, 1, 0, 0, 0, 1};
  EXPECT_EQ(json["calibrations"],
            (Json{{{"temperature", nullptr}, {"from_xyz", matrix}, {"individual", one}}}));
  EXPECT_EQ(json["orientation"], 8);
  EXPECT_EQ(json["exposure_time"], 0.25);
  EXPECT_EQ(json["iso"], 400);
  EXPECT_EQ(json["aperture"], 5.5);
  EXPECT_EQ(json["focal_length"], 35);
  EXPECT_EQ(json["make"], "Maker");
  EXPECT_EQ(json["model"], "Model 1");
  EXPECT_EQ(json["date"], "2026-11-22T18:06:29");
}

}  // namespace
}  // namespace vistrel
