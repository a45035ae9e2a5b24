// The table of names as the program prints it.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <fstream>

#include "apps/names/names_json.h"
#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

TEST(Formats, JsonIsTheTable) {
  const auto json = nlohmann::json::parse(Scratch().vistrel("formats --json").out);
  ASSERT_EQ(json["raw"].size(), app::pixelFormats().size());
  const auto text = [](const nlohmann::json& value) {
    return value.is_null() ? std::string() : value.get<std::string>();
  };
  for (size_t i = 0; i < json["raw"].size(); ++i) {
    const app::PixelFormat& f = app::pixelFormats()[i];
    const auto& row = json["raw"][i];
    EXPECT_EQ(row["packing"], app::packingNames(f.packing).name);
    EXPECT_EQ(row["bits"], f.bits);
    EXPECT_EQ(text(row["phase"]), f.phase ? vistrel_phase_name(*f.phase) : "");
    EXPECT_EQ(text(row["pfnc"]), f.pfnc);
    EXPECT_EQ(text(row["pfnc_value"]), f.pfncValue);
    EXPECT_EQ(text(row["v4l2"]), f.v4l2Code);
    EXPECT_EQ(text(row["v4l2_name"]), f.v4l2Name);
    EXPECT_EQ(text(row["libcamera"]), f.libcamera);
    EXPECT_EQ(text(row["mipi"]), f.mipi);
    EXPECT_EQ(text(row["gstreamer"]), f.gstreamer);
    EXPECT_EQ(text(row["ffmpeg"]), f.ffmpeg);
  }
  ASSERT_EQ(json["phases"].size(), 5u);
  EXPECT_EQ(json["phases"][2], nlohmann::json::parse(R"({
    "phase": "rggb", "rows": "RG/GB", "nBayer": 2, "constant": "VISTREL_RGGB", "pfnc": "BayerRG",
    "fits": "RGGB", "dng": "00 01 01 02", "blue": [1, 1], "opencv": "COLOR_BayerBG2BGR"})"));
  EXPECT_TRUE(json["phases"][4]["nBayer"].is_null());
  EXPECT_EQ(json["results"][3], nlohmann::json::parse(R"({
    "constant": "VISTREL_ARGB32", "bytes": 4, "order": "alpha red green blue", "v4l2": "BA24",
    "gstreamer": "ARGB", "ffmpeg": "argb", "opencv": "CV_8UC4"})"));
}

TEST(Formats, TheInstalledFileIsTheSame) {
  std::ostringstream file;
  file << std::ifstream(VISTREL_FORMATS_JSON).rdbuf();
  EXPECT_EQ(file.str(), Scratch().vistrel("formats --json").out);
}

TEST(Formats, TextHasEveryName) {
  const Scratch scratch;
  const std::string text = scratch.vistrel("formats").out;
  for (const app::PixelFormat& f : app::pixelFormats())
    for (const std::string& name :
         {f.pfnc, f.pfncValue, f.v4l2Code, f.v4l2Name, f.libcamera, f.gstreamer, f.ffmpeg, f.mipi})
      EXPECT_NE(text.find(" " + name), std::string::npos) << name;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 120u) << line;
}

TEST(Formats, One) {
  const Scratch scratch;
  const auto json = nlohmann::json::parse(scratch.vistrel("formats pBEE --json").out);
  EXPECT_EQ(json, nlohmann::json::parse(R"({"packing": "mipi", "bits": 14, "phase": "bggr",
    "pfnc": null, "pfnc_value": null, "v4l2": "pBEE", "v4l2_name": "SBGGR14P",
    "libcamera": "SBGGR14_CSI2P", "gstreamer": null, "ffmpeg": null, "mipi": null})"));
  EXPECT_TRUE(
      nlohmann::json::parse(scratch.vistrel("formats RAW10 --json").out)["phase"].is_null());
  EXPECT_NE(scratch.vistrel("formats BYR2").out.find("\n  bggr   16    BayerBG16 "),
            std::string::npos);
  const Finished none = scratch.vistrel("formats COLOR_BayerBG2BGR");
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.err.find("vistrel: NAME COLOR_BayerBG2BGR: unknown pixel format."), 0u);
}

}  // namespace
}  // namespace vistrel
