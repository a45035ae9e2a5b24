// Files that other programs write have the same samples here.
#include <sstream>

#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/input_test.h"
#include "tests/apps/texture.h"

namespace vistrel {
namespace {

struct Peers : InputTest {
  Peers() { scratch.write("in.pgm", pgm(37, 23, 4095, texture)); }

  bool has(const std::string& tool) const {
    return scratch.run({"sh", "-c", "command -v " + tool}).status == 0;
  }
  // What the command writes to standard output, or to `file` by itself, has the frame's samples.
  void expectSame(const std::string& command, const std::string& file) const {
    const Finished made = scratch.run({"sh", "-c", command});
    ASSERT_EQ(made.status, 0) << command << ": " << made.err;
    if (!std::filesystem::exists(scratch / file)) scratch.write(file, made.out);
    expectFrame(file);
    std::filesystem::remove(scratch / file);
  }
  void expectFrame(const std::string& file) const {
    const Finished result =
        scratch.vistrel("convert " + file + " --bits 12 --phase mono --depth 16 -o out.pgm");
    EXPECT_EQ(result.status, 0) << file << ": " << result.err;
    EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm")) << file;
  }
};

TEST_F(Peers, Netpbm) {
  if (!has("pnmtoplainpnm")) GTEST_SKIP() << "netpbm is not installed";
  expectSame("pnmtoplainpnm in.pgm", "plain.pgm");
  expectSame("pamchannel 0 <in.pgm", "gray.pam");
  expectSame("pamchannel 0 <in.pgm; pamchannel 0 <in.pgm", "two.pam");
  expectSame("pnmtopng in.pgm 2>/dev/null", "gray.png");
}

TEST_F(Peers, Tiffcp) {
  if (!has("tiffcp")) GTEST_SKIP() << "libtiff-tools is not installed";
  TiffSpec spec;
  spec.width = 37;
  spec.height = 23;
  spec.bits = 16;
  writeTiff(scratch / "in.tif", spec, texture);
  for (const char* options : {"-c zip", "-c zip:2", "-c lzw:2", "-c packbits",
                              "-c zip:2 -t -w 16 -l 32", "-c zip -B", "-c zip -8", "-c none -r 5"})
    expectSame("tiffcp " + std::string(options) + " in.tif new.tif", "new.tif");
}

TEST_F(Peers, Fpack) {
  if (!has("fpack")) GTEST_SKIP() << "libcfitsio-bin is not installed";
  std::string samples;
  for (uint32_t y = 0; y < 23; ++y)
    for (uint32_t x = 0; x < 37; ++x)
      samples += {static_cast<char>(texture(x, y) >> 8), static_cast<char>(texture(x, y))};
  scratch.write("in.fits", fits(cards(16, {"37", "23"}), samples));
  expectFrame("in.fits");
  for (const char* options : {"-r", "-g", "-r -w"})
    expectSame("fpack " + std::string(options) + " -O new.fits.fz in.fits", "new.fits.fz");
  expectSame("gzip -c in.fits", "new.fits.gz");
}

TEST_F(Peers, Python) {
  const Finished written = scratch.run({"/usr/bin/python3", VISTREL_WRITE_FRAMES, "in.pgm"});
  if (written.status != 0) GTEST_SKIP() << "python3-numpy is not installed";
  std::istringstream names(written.out);
  for (std::string name; names >> name;) expectFrame(name);
}

}  // namespace
}  // namespace vistrel
