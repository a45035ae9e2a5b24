// Values that can't be true are dropped with a warning.
#include "apps/input/camera_metadata.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace vistrel::app {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

CameraMetadata validated(CameraMetadata m, const std::string& warning) {
  std::vector<std::string> warnings;
  dropInvalid(m, 40, 30, warnings);
  EXPECT_EQ(warnings, warning.empty() ? std::vector<std::string>{} : std::vector{warning});
  return m;
}

TEST(CameraMetadata, ValidValuesStay) {
  CameraMetadata m;
  m.black = {0, 64.5, 66, 65534};
  m.white = 65535;
  m.neutral = {0.0625, 1, 0.5};
  m.light = Chromaticity{0.3, 0.6};
  m.analogBalance = {2, 1, 1};
  m.calibrations = {{kIdentity, kIdentity, 2856}};
  m.orientation = 8;
  m.crop = Crop{39, 0, 1, 30};
  m.baselineExposure = -16;
  m.gain = 0;
  m.exposureTime = m.iso = m.aperture = m.focalLength = 0.001;
  const CameraMetadata v = validated(m, "");
  EXPECT_TRUE(v.black && v.white && v.neutral && v.light && v.analogBalance && v.orientation &&
              v.crop && v.baselineExposure && v.gain && v.exposureTime && v.iso && v.aperture &&
              v.focalLength);
  EXPECT_EQ(v.calibrations.size(), 1u);
}

TEST(CameraMetadata, Levels) {
  CameraMetadata m;
  m.black = {0, -1, 0, 0};
  EXPECT_FALSE(validated(m, "black level 0 -1 0 0: 0 to 65535 are allowed; not used").black);
  m.black = {0, 0, kNan, 0};
  EXPECT_FALSE(validated(m, "black level 0 0 nan 0: 0 to 65535 are allowed; not used").black);
  m = {};
  m.white = 70000;
  EXPECT_FALSE(validated(m, "white level 70000: 1 to 65535 are allowed; not used").white);
  m.white = 0.5;
  EXPECT_FALSE(validated(m, "white level 0.5: 1 to 65535 are allowed; not used").white);
  m.white = 100;
  m.black = {1, 1, 1, 100};
  const auto both = validated(m, "black level 1 1 1 100 is not below white level 100; not used");
  EXPECT_FALSE(both.black || both.white);
}

TEST(CameraMetadata, Neutral) {
  const std::string why = "its parts must be positive, none more than 16 times another; not used";
  CameraMetadata m;
  for (const auto& [neutral, text] : {std::pair<Vector3, const char*>{{0, 1, 1}, "0 1 1"},
                                      {{1, -1, 1}, "1 -1 1"},
                                      {{1, 1, kNan}, "1 1 nan"},
                                      {{1, kInfinity, 1}, "1 inf 1"},
                                      {{0.06, 1, 1}, "0.06 1 1"}}) {
    m.neutral = neutral;
    EXPECT_FALSE(validated(m, "neutral " + std::string(text) + ": " + why).neutral);
  }
  m = {};
  m.light = Chromaticity{0.5, 0};
  EXPECT_FALSE(validated(m, "white x 0.5, y 0: no light has it; not used").light);
  m.light = Chromaticity{0.5, 0.5};
  EXPECT_FALSE(validated(m, "white x 0.5, y 0.5: no light has it; not used").light);
}

TEST(CameraMetadata, Matrices) {
  CameraMetadata m;
  m.analogBalance = {1, 0, 1};
  EXPECT_FALSE(
      validated(m, "analog balance 1 0 1: its parts must be positive; not used").analogBalance);
  m = {};
  m.calibrations = {{{1, 2, 3, 4, 5, 6, 7, 8, 9}, kIdentity, {}}, {kIdentity, kIdentity, 6504}};
  const auto one =
      validated(m, "colour matrix 1 2 3 4 5 6 7 8 9: it has no inverse; not used").calibrations;
  ASSERT_EQ(one.size(), 1u);
  EXPECT_EQ(one[0].temperature, 6504);
  m.calibrations = {{kIdentity, Matrix3{}, {}}};
  EXPECT_TRUE(validated(m, "colour matrix 1 0 0 0 1 0 0 0 1: it has no inverse; not used")
                  .calibrations.empty());
}

TEST(CameraMetadata, Geometry) {
  CameraMetadata m;
  for (const uint32_t code : {0u, 9u, 65535u}) {
    m.orientation = code;
    EXPECT_FALSE(
        validated(m, "orientation " + std::to_string(code) + ": 1 to 8 are allowed; not used")
            .orientation);
  }
  m = {};
  for (const auto& [crop, text] : {std::pair<Crop, const char*>{{0, 0, 0, 30}, "0x30+0+0"},
                                   {{1, 0, 40, 30}, "40x30+1+0"},
                                   {{0, 1, 40, 30}, "40x30+0+1"},
                                   {{UINT32_MAX, 0, 2, 30}, "2x30+4294967295+0"},
                                   {{0, 0, 40, UINT32_MAX}, "40x4294967295+0+0"}}) {
    m.crop = crop;
    EXPECT_FALSE(
        validated(m, "crop " + std::string(text) + ": it exceeds the frame, or is empty; not used")
            .crop);
  }
}

TEST(CameraMetadata, Exposure) {
  CameraMetadata m;
  m.baselineExposure = kNan;
  EXPECT_FALSE(validated(m, "baseline exposure nan: at most 16 stops are allowed; not used")
                   .baselineExposure);
  for (const double unknown : {0.0, -1.0, kNan, kInfinity}) {
    m = {};
    m.exposureTime = m.iso = m.aperture = m.focalLength = unknown;
    const CameraMetadata v = validated(m, "");
    EXPECT_FALSE(v.exposureTime || v.iso || v.aperture || v.focalLength);
  }
}

TEST(CameraMetadata, PlainText) {
  EXPECT_EQ(plainText("  A\x1b[2Jb \n\x7f"), "A[2Jb");
  EXPECT_EQ(plainText(" \t"), std::nullopt);
  EXPECT_EQ(plainText(""), std::nullopt);
}

TEST(CameraMetadata, PlainDate) {
  EXPECT_EQ(plainDate("2026:11:22 18:06:29"), "2026-11-22T18:06:29");
  EXPECT_EQ(plainDate("2026-11-22T18:06:29.123"), "2026-11-22T18:06:29");
  for (const char* const bad : {"", "2026:11:22", "    :  :     :  :  ", "0000:00:00 00:00:00",
                                "2026:11:22 18:06:2x", "20261122 18:06:29 x"})
    EXPECT_EQ(plainDate(bad), std::nullopt) << bad;
}

}  // namespace
}  // namespace vistrel::app
