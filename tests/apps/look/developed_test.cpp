// Real frames, if available, developed by the program and judged by measurement.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/apps/look/measures.h"
#include "tests/apps/program.h"
#include "tests/real_frames.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;

struct Developed : ::testing::Test {
  Picture develop(const fs::path& frame) const {
    const std::string mono = frame.parent_path().filename() == "mono" ? " --phase mono" : "";
    const Finished result =
        scratch.vistrel("develop " + frame.string() + " --from-name -o out.png" + mono);
    EXPECT_EQ(result.status, 0) << result.err;
    return readPng(scratch / "out.png");
  }
  const Scratch scratch;
};

bool showsSky(const fs::path& frame) {
  const std::string name = frame.stem().string();
  return name.find("ngc") != std::string::npos || name.find("star") != std::string::npos;
}

TEST_F(Developed, RealFramesAreNeitherDarkNorWashedOut) {
  size_t frames = 0;
  for (const char* const folder : {"bayer", "mono"})
    for (const fs::path& frame : framesIn(folder)) {
      ++frames;
      const Luma luma = lumaOf(develop(frame));
      if (showsSky(frame)) {
        EXPECT_GE(luma.median, 20) << frame;
        EXPECT_LE(luma.median, 60) << frame;
      } else {
        EXPECT_GE(luma.mean, 70) << frame;
        EXPECT_LE(luma.mean, 170) << frame;
      }
    }
  if (!frames) GTEST_SKIP() << "VISTREL_DATA names no folder with bayer/ or mono/";
}

// Where the sensors of known frames clip; in others, at the largest sample.
int whiteOf(const fs::path& frame, const Mosaic& mosaic) {
  const std::pair<const char*, int> known[] = {{"b03", 959}, {"b05", 15520}, {"b07", 3880}};
  for (const auto& [name, white] : known)
    if (frame.stem().string().starts_with(name)) return white;
  int largest = 0;
  for (uint32_t y = 0; y < mosaic.height; ++y)
    for (uint32_t x = 0; x < mosaic.width; ++x)
      largest = std::max(largest, mosaic.at(int(x), int(y)));
  return largest;
}

TEST_F(Developed, WhiteIsWhereTheSensorClips) {
  size_t frames = 0;
  for (const char* const folder : {"bayer", "mono"})
    for (const fs::path& frame : framesIn(folder)) {
      ++frames;
      const Mosaic mosaic(frame);
      EXPECT_LE(percentBurnt(develop(frame), mosaic, whiteOf(frame, mosaic)), 2) << frame;
    }
  if (!frames) GTEST_SKIP() << "VISTREL_DATA names no folder with bayer/ or mono/";
}

// A correlation of 0.5 is not chance with 20 tiles.
TEST_F(Developed, StarsKeepTheirColours) {
  size_t frames = 0;
  for (const fs::path& frame : framesIn("bayer")) {
    if (!showsSky(frame)) continue;
    ++frames;
    const Mosaic mosaic(frame);
    const std::string phase = frameNameOf(frame.stem()).phase;
    const StarColours stars = starColoursOf(develop(frame), mosaic, phase, whiteOf(frame, mosaic));
    EXPECT_GE(stars.tiles, 20u) << frame;
    EXPECT_GE(stars.correlation, 0.5) << frame;
    EXPECT_GE(stars.deviation, 0.03) << frame;
  }
  if (!frames) GTEST_SKIP() << "VISTREL_DATA names no folder with frames of skies";
}

TEST_F(Developed, NeutralPatchesOfChartsAreNeutralAndInOrder) {
  size_t charts = 0;
  for (const fs::path& frame : framesIn("bayer")) {
    const fs::path chart = fs::path(VISTREL_CHARTS) / (frame.stem().string() + ".txt");
    if (!fs::exists(chart)) continue;
    ++charts;
    const Picture picture = develop(frame);
    double before = 100;
    for (const Patch& patch : readPatches(chart.string())) {
      const Lab lab = labOf(meanOf(picture, patch.box));
      EXPECT_LT(lab.chroma(), 10) << frame << patch.name;
      EXPECT_LT(lab.lightness, before) << frame << patch.name;
      before = lab.lightness;
    }
  }
  if (!charts) GTEST_SKIP() << "VISTREL_DATA names no folder with charts";
}

}  // namespace
}  // namespace vistrel
