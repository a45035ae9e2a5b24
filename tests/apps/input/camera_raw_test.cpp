// Camera raw files, with and without the plug-in.
#include <tiffio.h>

#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct CameraRaw : InputTest {};

// LibRaw goes by content, so a DNG may stand in for a camera raw file.
TEST_F(CameraRaw, CameraRawByThePlugin) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  writeTiff(scratch / "in.nef", smallDng({1, 2, 0, 1}, 16383), noise(14));  // GB/RG
  const auto description = info("in.nef");
  EXPECT_EQ(description["format"], "camera raw");
  EXPECT_EQ(description["phase"], "gbrg");
  EXPECT_EQ(description["bits"], 14);
  expectSamples("in.nef", 64, 48, 14, noise(14));
}

// The same file through both readers. All places and colours have different values, so that an
// exchange would show.
TEST_F(CameraRaw, CameraIsThatOfTheDng) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  TiffSpec spec = smallDng({1, 0, 2, 1}, 15000);  // GR/BG
  spec.blackSize = {2, 2};
  spec.orientation = 6;
  spec.frame.rationals = {{TIFFTAG_BLACKLEVEL, {64, 66, 68, 71}}};
  spec.camera.rationals = {{TIFFTAG_ASSHOTNEUTRAL, {0.5f, 1, 0.625f}}};
  spec.camera.texts = {{TIFFTAG_MAKE, "Maker"}, {TIFFTAG_MODEL, "Model"}};
  writeTiff(scratch / "in.dng", spec, noise(13));
  std::filesystem::copy_file(scratch / "in.dng", scratch / "in.nef");
  const auto ours = info("in.dng"), theirs = info("in.nef");
  for (const char* exact : {"phase", "black_level", "white_level", "orientation", "bits"})
    EXPECT_EQ(theirs[exact], ours[exact]) << exact;
  const auto expectNear = [](const nlohmann::json& a, const nlohmann::json& b) {
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i) EXPECT_NEAR(a[i].get<double>(), b[i].get<double>(), 1e-5);
  };
  expectNear(theirs["neutral"], ours["neutral"]);
  expectNear(theirs["gains"], ours["gains"]);
  expectSamples("in.nef", 64, 48, 14, noise(13));
}

// LibRaw knows a matrix for some cameras. Its own picture of a frame of one colour has the product
// of the matrix with that colour: here with gray and a part of red, of green or of blue.
TEST_F(CameraRaw, MatrixMakesTheColoursOfLibRaw) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  if (scratch.run({"sh", "-c", "command -v dcraw_emu"}).status != 0)
    GTEST_SKIP() << "libraw-bin is not installed";
  constexpr uint32_t kGray = 16000, kPart = 8000;
  TiffSpec spec;
  spec.width = 640;
  spec.height = 480;
  spec.bits = 16;
  spec.cfa = {0, 1, 1, 2};
  spec.camera.texts = {{TIFFTAG_MAKE, "PENTAX Corporation"}, {TIFFTAG_MODEL, "PENTAX K10D"}};
  for (uint32_t colour = 0; colour < 3; ++colour) {
    writeTiff(scratch / "in.pef", spec, [colour](uint32_t x, uint32_t y) {
      return kGray + (x % 2 + y % 2 == colour ? kPart : 0);
    });
    const auto ours = info("in.pef")["camera_to_srgb"];
    ASSERT_EQ(ours.size(), 9u);
    ASSERT_EQ(scratch
                  .run({"dcraw_emu", "-W", "-6", "-g", "1", "1", "-r", "1", "1", "1", "1", "-k",
                        "0", "-S", "65535", "-q", "0", "in.pef"})
                  .status,
              0);
    const std::string picture = scratch.read("in.pef.ppm");
    for (uint32_t row = 0; row < 3; ++row) {
      const size_t at = picture.size() - 6 * (640 * 240 + 320) + 2 * row;
      const double theirs = uint8_t(picture[at]) << 8 | uint8_t(picture[at + 1]);
      EXPECT_NEAR(ours[3 * row + colour].get<double>(), (theirs - kGray) / kPart, 0.001)
          << row << " " << colour;
    }
  }
}

TEST_F(CameraRaw, CameraRawWithoutThePlugin) {
  scratch.write("in.cr2", "II*\0");
  std::filesystem::copy_file(VISTREL_PROGRAM, scratch / "vistrel");
  const Finished result = scratch.run({(scratch / "vistrel").string(), "info", "in.cr2"});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.err.find("vistrel: in.cr2: reading a camera raw file needs the plug-in "
                            "vistrel-libraw.so, which is neither in "),
            0u)
      << result.err;
}

}  // namespace
}  // namespace vistrel
