// Camera raw files, with and without the plug-in.
#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct CameraRaw : InputTest {};

// LibRaw goes by content, so a DNG may stand in for a camera raw file.
TEST_F(CameraRaw, CameraRawByThePlugin) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  TiffSpec spec;
  spec.width = 64;
  spec.height = 48;
  spec.bits = 16;
  spec.cfa = {1, 2, 0, 1};  // GB/RG
  spec.isDng = true;
  spec.white = 16383;
  writeTiff(scratch / "in.nef", spec, noise(14));
  const auto description = info("in.nef");
  EXPECT_EQ(description["format"], "camera raw");
  EXPECT_EQ(description["phase"], "gbrg");
  EXPECT_EQ(description["bits"], 14);
  expectSamples("in.nef", 64, 48, 14, noise(14));
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
