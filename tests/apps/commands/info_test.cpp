// vistrel info, as a process.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

nlohmann::json infoOf(const std::string& file, const std::string& options = "") {
  const Scratch scratch;
  scratch.write("in.pgm", file);
  const Finished result = scratch.vistrel("info in.pgm --json " + options);
  EXPECT_EQ(result.status, 0) << result.err;
  return nlohmann::json::parse(result.out);
}

std::string fourSamples(uint32_t maxval, std::vector<uint32_t> samples) {
  return pgm(4, 1, maxval, [samples](uint32_t x, uint32_t) { return samples[x]; });
}

TEST(Info, AllKeys) {
  const auto expected = nlohmann::json::parse(R"({
    "file": "in.pgm", "format": "PGM", "pixel_format": null, "frames": 1, "width": 4, "height": 1, "bytes_per_sample": 2, "maxval": 1023,
    "bits": 10, "bits_known": true, "phase": null,
    "trailing_bytes": 0,
    "bits_used": 10, "zero_low_bits": 2, "min": 4, "max": 1020, "percent_at_max": 50.0,
    "mean": 513.0, "full_scale": 1020, "percent_saturated": 50.0,
    "black_level": null, "white_level": null, "neutral": null, "white_xy": null, "analog_balance": null,
    "calibrations": [], "temperature": null, "gains": null, "camera_to_srgb": null, "orientation": null, "crop": null,
    "make": null, "model": null, "date": null, "exposure_time": null, "iso": null, "gain": null, "aperture": null,
    "focal_length": null, "baseline_exposure": null})");
  EXPECT_EQ(infoOf(fourSamples(1023, {4, 1020, 8, 1020})), expected);
}

TEST(Info, UnspecifiedDepthIsTheUsedOne) {
  const auto info = infoOf(fourSamples(65535, {1, 4095, 4095, 4095}));
  EXPECT_EQ(info["bits"], 16);
  EXPECT_EQ(info["bits_used"], 12);
  EXPECT_EQ(info["full_scale"], 4095);
  EXPECT_EQ(info["percent_saturated"], 75.0);
}

TEST(Info, SpecifiedDepthCounts) {
  const auto info = infoOf(fourSamples(65535, {1, 900, 4095, 5000}), "--bits 12");
  EXPECT_EQ(info["bits"], 12);
  EXPECT_EQ(info["bits_used"], 13);
  EXPECT_EQ(info["percent_saturated"], 50.0);
}

TEST(Info, BlackFrame) {
  const auto info = infoOf(fourSamples(65535, {0, 0, 0, 0}));
  EXPECT_EQ(info["bits_used"], 0);
  EXPECT_EQ(info["zero_low_bits"], 0);
  EXPECT_EQ(info["percent_saturated"], 0.0);
  EXPECT_EQ(info["percent_at_max"], 100.0);
}

TEST(Info, HeaderlessRaw) {
  const auto info = infoOf(std::string("\x00\x03\x01\x00", 4), "-s 2x1 --bits 10");
  EXPECT_TRUE(info["maxval"].is_null());
  EXPECT_EQ(info["min"], 1);
  EXPECT_EQ(info["max"], 768);
}

TEST(Info, Text) {
  const Scratch scratch;
  scratch.write("in.pgm", fourSamples(255, {0, 255, 128, 255}));
  EXPECT_EQ(scratch.vistrel("info in.pgm").out,
            "format           PGM\n"
            "size             4 x 1\n"
            "sample           1 byte\n"
            "maxval           255\n"
            "bits             8\n"
            "phase            not specified\n"
            "bits used        8\n"
            "zero low bits    0\n"
            "lowest           0\n"
            "highest          255 (50.000 % of samples)\n"
            "mean             159.500\n"
            "saturated        50.000 % of samples, at 255 or above\n");
}

// The scene's brightest samples have the level that the file calls white, below full scale.
TEST(Info, SaturatedAtTheWhiteLevel) {
  const Scratch scratch;
  EXPECT_EQ(scratch.vistrel("scene --camera -s 64x48 --bits 12 -o in.dng").status, 0);
  const auto info = nlohmann::json::parse(scratch.vistrel("info in.dng --json").out);
  EXPECT_EQ(info["white_level"], info["max"]);
  EXPECT_LT(info["max"], info["full_scale"]);
  EXPECT_GT(info["percent_saturated"], 0);
  EXPECT_EQ(info["percent_saturated"], info["percent_at_max"]);
}

TEST(Info, SeveralFiles) {
  const Scratch scratch;
  scratch.write("a.pgm", fourSamples(255, {0, 255, 128, 255}));
  scratch.write("b.pgm", fourSamples(1023, {7, 7, 7, 7}));
  const std::string a = scratch.vistrel("info a.pgm").out, b = scratch.vistrel("info b.pgm").out;
  const Finished text = scratch.vistrel("info a.pgm none.pgm b.pgm");
  EXPECT_EQ(text.status, 1);
  EXPECT_EQ(text.err, "vistrel: none.pgm: cannot be read: No such file or directory\n");
  EXPECT_EQ(text.out, "file             a.pgm\n" + a + "\nfile             b.pgm\n" + b + "\n");
  const auto json = nlohmann::json::parse(scratch.vistrel("info a.pgm b.pgm --json").out);
  ASSERT_EQ(json.size(), 2u);
  EXPECT_EQ(json[0]["file"], "a.pgm");
  EXPECT_EQ(json[1]["file"], "b.pgm");
  EXPECT_EQ(json[1]["max"], 7);
  const auto failed = nlohmann::json::parse(scratch.vistrel("info a.pgm none.pgm --json").out);
  ASSERT_EQ(failed.size(), 2u);
  EXPECT_EQ(failed[1], (nlohmann::json{{"file", "none.pgm"},
                                       {"error", "cannot be read: No such file or directory"}}));
}

TEST(Info, BadFiles) {
  const Scratch scratch;
  const Finished missing = scratch.vistrel("info in.pgm");
  EXPECT_EQ(missing.status, 4);
  EXPECT_EQ(missing.err, "vistrel: in.pgm: cannot be read: No such file or directory\n");
  scratch.write("in.pgm", "P5\n4 4\n255\nabc");
  const Finished cut = scratch.vistrel("info in.pgm --json");
  EXPECT_EQ(cut.status, 3);
  EXPECT_EQ(
      nlohmann::json::parse(cut.out),
      (nlohmann::json{
          {"file", "in.pgm"},
          {"error", "the file is too short: 4x4 samples of 8 bits do not fit its 14 bytes"}}));
  EXPECT_EQ(cut.err,
            "vistrel: in.pgm: the file is too short: 4x4 samples of 8 bits do not fit its 14 "
            "bytes\n");
}

}  // namespace
}  // namespace vistrel
