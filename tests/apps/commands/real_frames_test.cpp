// Frames of real sensors, if available: every picture has the samples that plain means of the
// neighbours yield.
#include <gtest/gtest.h>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "tests/real_frames.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;

// The three means at a pixel that has two neighbours or more on every side.
class Means {
 public:
  Means(const Mosaic& mosaic, std::string phase) : mosaic_(mosaic), phase_(std::move(phase)) {}

  int colour(char wanted, int x, int y) const {
    int sum = 0, count = 0;
    const int reach = wanted == filter(x, y) ? 0 : 1;
    for (int j = -reach; j <= reach; ++j)
      for (int i = -reach; i <= reach; ++i)
        if (wanted == filter(x + i, y + j)) sum += sensed(x + i, y + j), ++count;
    return sum / count;
  }

 private:
  char filter(int x, int y) const { return phase_[2 * (y & 1) + (x & 1)]; }
  int sensed(int x, int y) const {
    const auto& m = mosaic_;
    if (filter(x, y) != 'g') return m.at(x, y);
    return (m.at(x - 1, y - 1) + m.at(x + 1, y - 1) + m.at(x - 1, y + 1) + m.at(x + 1, y + 1) +
            4 * m.at(x, y)) /
           8;
  }

  const Mosaic& mosaic_;
  std::string phase_;
};

TEST(RealFrames, BayerFramesHaveTheirColours) {
  const auto frames = framesIn("bayer");
  if (frames.empty()) GTEST_SKIP() << "VISTREL_DATA names no folder with bayer/";
  const Scratch scratch;
  for (const fs::path& frame : frames) {
    const FrameName name = frameNameOf(frame.stem());
    const Finished result = scratch.vistrel("convert " + frame.string() + " -o out.png --phase " +
                                            name.phase + " --bits " + std::to_string(name.bits));
    ASSERT_EQ(result.status, 0) << result.err;
    const Picture picture = readPng(scratch / "out.png");
    const Mosaic mosaic(frame);
    const Means means(mosaic, name.phase);
    ASSERT_EQ(picture.width, mosaic.width);
    ASSERT_EQ(picture.height, mosaic.height);
    ASSERT_EQ(picture.channels, 3u);
    for (int y = 2; y < static_cast<int>(mosaic.height) - 2; ++y)
      for (int x = 2; x < static_cast<int>(mosaic.width) - 2; ++x)
        for (int c = 0; c < 3; ++c)
          ASSERT_EQ(picture.at(x, y, c), means.colour("rgb"[c], x, y) >> (name.bits - 8))
              << frame << " column " << x << ", row " << y << ", "
              << "rgb"[c];
  }
}

TEST(RealFrames, MonoFramesKeepTheirSamples) {
  const auto frames = framesIn("mono");
  if (frames.empty()) GTEST_SKIP() << "VISTREL_DATA names no folder with mono/";
  const Scratch scratch;
  for (const fs::path& frame : frames) {
    const FrameName name = frameNameOf(frame.stem());
    const Finished result =
        scratch.vistrel("convert " + frame.string() + " -o out.png --from-name --phase mono");
    ASSERT_EQ(result.status, 0) << result.err;
    const Picture picture = readPng(scratch / "out.png");
    const Mosaic mosaic(frame);
    ASSERT_EQ(picture.channels, 1u);
    ASSERT_EQ(picture.samples.size(), size_t{mosaic.width} * mosaic.height);
    for (size_t i = 0; i < picture.samples.size(); ++i) {
      const int x = static_cast<int>(i % mosaic.width), y = static_cast<int>(i / mosaic.width);
      ASSERT_EQ(picture.samples[i], mosaic.at(x, y) >> (name.bits - 8)) << frame << ' ' << i;
    }
  }
}

}  // namespace
}  // namespace vistrel
