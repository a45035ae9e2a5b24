// Which input becomes which picture.
#include <sys/stat.h>

#include "tests/apps/batch/batch_test.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct Jobs : BatchTest {};

TEST_F(Jobs, EveryFrameOfAFileGetsAPicture) {
  scratch.write("two.pgm", scratch.read("a.pgm") + scratch.read("b.pgm"));
  EXPECT_EQ(convert("two.pgm c.pgm --type pgm").err, "");
  EXPECT_EQ(scratch.vistrel("convert two.pgm --phase mono -o one.png --frame 1").err, "");
  EXPECT_EQ(scratch.vistrel("convert two.pgm --phase mono -o all.png").err, "");
  EXPECT_EQ(scratch.names(),
            (Names{"a.pgm", "all_000000.png", "all_000001.png", "b.pgm", "bad.pgm", "c.pgm",
                   "one.png", "out/c.pgm", "out/two_000000.pgm", "out/two_000001.pgm", "two.pgm"}));
  EXPECT_EQ(scratch.read("out/two_000001.pgm"), scratch.read("b.pgm"));
  EXPECT_EQ(valueOf("all_000000.png"), 10u * 'a' % 256);
  EXPECT_EQ(valueOf("one.png"), 10u * 'b' % 256);
}

TEST_F(Jobs, TooManyFramesAreRejected) {
  scratch.write("dots.raw", std::string(1'000'001, ' '));
  const Finished result = convert("dots.raw -s 1x1 --bits 8");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err,
            "vistrel: dots.raw: it has 1000001 frames: at most 1000000 are allowed at once; "
            "--frame N selects one\n");
}

TEST_F(Jobs, PicturesAreNotWrittenAmongTheFramesOfAFolder) {
  fs::create_directory(scratch / "in");
  put("in/x.pgm", 1);
  fs::create_directory_symlink("in", scratch / "link");
  const Names before = scratch.names();
  const Finished png = scratch.vistrel("convert in --phase mono -o link");
  EXPECT_EQ(png.status, 2);
  EXPECT_EQ(png.err,
            "vistrel: -o link: it is the input folder in, where the next run would take .png "
            "pictures for frames; choose another folder, or name the frames one by one\n");
  EXPECT_EQ(scratch.names(), before);
  // Pictures of other types are harmless there, and so are pictures beside frames given by name.
  for (const std::string run : {"in --type ppm", "in --type ppm", "in/x.pgm", "in/x.pgm"})
    EXPECT_EQ(scratch.vistrel("convert --phase rggb -o in " + run).status, 0) << run;
}

TEST_F(Jobs, StandardOutputTakesASinglePicture) {
  fs::create_directory(scratch / "in");
  put("in/x.pgm", 1);
  for (const std::string inputs : {"a.pgm b.pgm", "in"})
    for (const std::string to : {"-", "png:-"}) {
      const Finished result = scratch.vistrel("convert " + inputs + " --phase mono -o " + to);
      EXPECT_EQ(result.status, 2);
      EXPECT_EQ(result.err, "vistrel: -o " + to +
                                ": it takes a single picture; several inputs, or a folder of "
                                "inputs, need a folder\n");
    }
  const Finished none =
      scratch.run({VISTREL_PROGRAM, "convert", "a.pgm", "--phase", "mono", "-o", ""});
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.err, "vistrel: -o: the name of a picture or of a folder is expected\n");
}

TEST_F(Jobs, NoInputIsOverwritten) {
  EXPECT_EQ(scratch.vistrel("convert a.pgm --phase mono -o b.png").err, "");
  const std::string picture = scratch.read("b.png");
  const Finished result = scratch.vistrel("convert b.pgm b.png --phase mono -o . --overwrite");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "vistrel: -o ./b.png: it is the same file as the input b.png\n");
  EXPECT_EQ(scratch.read("b.png"), picture);
}

TEST_F(Jobs, OfSeveralInputsNeedAFolder) {
  const Finished none = scratch.vistrel("convert a.pgm b.pgm --phase mono -o no");
  EXPECT_EQ(none.status, 4);
  EXPECT_EQ(none.err, "vistrel: -o no: there is no such folder, and several inputs need one\n");
  const Finished file = scratch.vistrel("convert a.pgm b.pgm --phase mono -o bad.pgm");
  EXPECT_EQ(file.status, 2);
  EXPECT_EQ(file.err, "vistrel: -o bad.pgm: a folder is expected; this is a file\n");
}

TEST_F(Jobs, NeedNamesOfTheirOwn) {
  fs::create_directory(scratch / "more");
  put("more/a.pgm", 1);
  const Finished result = convert("a.pgm more/a.pgm");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err,
            "vistrel: -o out/a.png: both a.pgm and more/a.pgm would be written there\n");
}

}  // namespace
}  // namespace vistrel
