#include "apps/files/stem.h"

#include <gtest/gtest.h>

namespace vistrel {
namespace {

TEST(Stem, LeavesOutTheExtension) {
  EXPECT_EQ(app::stemOf("roses/rose.pgm"), "rose");
  EXPECT_EQ(app::stemOf("rose.red.pgm"), "rose.red");
  EXPECT_EQ(app::stemOf("rose"), "rose");
}

TEST(Stem, LeavesOutBothExtensionsOfACompressedFile) {
  EXPECT_EQ(app::stemOf("night/m31.fits.gz"), "m31");
  EXPECT_EQ(app::stemOf("m31.001.FIT.FZ"), "m31.001");
  EXPECT_EQ(app::stemOf("m31.fz"), "m31");
}

TEST(Stem, ExtensionInLowerCase) {
  EXPECT_EQ(app::extensionOf("A.FITS"), ".fits");
  EXPECT_EQ(app::extensionOf(".pgm"), "");
}

}  // namespace
}  // namespace vistrel
