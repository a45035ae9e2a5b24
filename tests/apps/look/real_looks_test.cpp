// Looks decided for real frames, if available. Patches of charts are averaged before the look is
// applied to them, so that the demosaic algorithm doesn't matter.
#include <gtest/gtest.h>

#include <algorithm>

#include "apps/look/brightness.h"
#include "apps/look/decide.h"
#include "tests/apps/look/frame.h"
#include "tests/apps/look/measures.h"
#include "tests/real_frames.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

uint32_t phaseOf(const std::string& name) {
  if (name == "grbg") return VISTREL_GRBG;
  if (name == "bggr") return VISTREL_BGGR;
  if (name == "rggb") return VISTREL_RGGB;
  return name == "gbrg" ? VISTREL_GBRG : VISTREL_MONO;
}

Frame frameOf(const fs::path& path) {
  const Mosaic mosaic(path);
  const FrameName name = frameNameOf(path.stem());
  return Frame(mosaic.width, mosaic.height, name.bits, phaseOf(name.phase),
               [&](uint32_t x, uint32_t y) { return mosaic.at(int(x), int(y)); });
}

Srgb developed(const Frame& frame, const vistrel_region& box, const Look& look) {
  std::array<double, 3> mean{};
  const auto blocks = blocksOf(frame, look.black, look.white, box);
  for (const Block& block : blocks)
    for (size_t i = 0; i < 3; ++i)
      mean[i] += double{block.colour[i]} * look.gains[i] / 4096 / double(blocks.size());
  Srgb colour{};
  for (size_t i = 0; i < 9; ++i) colour[i / 3] += look.matrix[i] * mean[i % 3] / 4096;
  const CurveSketch curve(look.transfer);
  for (double& c : colour) c = 255 * curve.at(c * look.exposure / 4096);
  return colour;
}

TEST(RealLooks, NeutralPatchesAreNeutralAndInOrder) {
  uint32_t charts = 0;
  for (const fs::path& path : framesIn("bayer")) {
    const fs::path chart = fs::path(VISTREL_CHARTS) / (path.stem().string() + ".txt");
    if (!fs::exists(chart)) continue;
    ++charts;
    const Frame frame = frameOf(path);
    const Look look = decideLook(frame, {});
    double lighter = 101;
    for (const Patch& patch : readPatches(chart)) {
      const Lab lab = labOf(developed(frame, patch.box, look));
      EXPECT_LT(lab.chroma(), 10) << path << patch.name;
      EXPECT_LT(lab.lightness, lighter) << path << patch.name;
      lighter = lab.lightness;
    }
  }
  if (!charts) GTEST_SKIP() << "VISTREL_DATA names no folder with bayer/";
}

TEST(RealLooks, SkiesAreDarkAndDaylightIsBright) {
  auto frames = framesIn("bayer");
  for (const fs::path& path : framesIn("mono")) frames.push_back(path);
  if (frames.empty()) GTEST_SKIP() << "VISTREL_DATA names no folder with bayer/ and mono/";
  for (const fs::path& path : frames) {
    const std::string name = path.stem();
    const bool isSky = name.starts_with("b06") || name.starts_with("m02");
    const Frame frame = frameOf(path);
    const Look look = decideLook(frame, {});
    const Brightness brightness(blocksOf(frame, look.black, look.white), look);
    const double exposure = look.exposure / 4096.0;
    const CurveSketch curve(look.transfer);
    const double luminance =
        255 * (isSky ? curve.at(exposure * brightness.median()) : brightness.mean(exposure, curve));
    EXPECT_GE(luminance, isSky ? 20 : 70) << name;
    EXPECT_LE(luminance, isSky ? 60 : 170) << name;
  }
}

}  // namespace
}  // namespace vistrel::app
