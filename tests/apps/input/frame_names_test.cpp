#include "apps/input/frame_names.h"

#include <gtest/gtest.h>

namespace vistrel {
namespace {

TEST(FrameNames, ByTheirExtensionInAnyCase) {
  for (const char* name : {"a.pgm", "a.b.TIF", "dir.x/a.Dng", "a.fits", "a.NEF", "a.pam",
                           "a.fits.gz", "a.FIT.GZ", "a.fits.fz", "a.fz"})
    EXPECT_TRUE(app::isFrameName(name)) << name;
  for (const char* name : {"a.ppm", "pgm", "a.pgm.txt", "a.raw", "a", ".pgm", "a.gz", "a.pgm.gz"})
    EXPECT_FALSE(app::isFrameName(name)) << name;
}

TEST(FrameNames, CameraRawAndHeaderless) {
  EXPECT_TRUE(app::isCameraRawName("a.CR2"));
  EXPECT_FALSE(app::isCameraRawName("a.dng"));
  EXPECT_TRUE(app::isHeaderlessName("a.RAW"));
  EXPECT_FALSE(app::isHeaderlessName("a.pgm"));
}

}  // namespace
}  // namespace vistrel
