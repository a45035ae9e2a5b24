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

TEST_F(Jobs, SomeOutputsTakeASinglePicture) {
  fs::create_directory(scratch / "in");
  put("in/x.pgm", 1);
  for (const std::string inputs : {"a.pgm b.pgm", "in"})
    for (const auto& [to, folder] : {std::pair("TIF:-", "pictures"),
                                     {"png:-", "pictures"},
                                     {"bad.pgm", "bad"},
                                     {"out/new.PNG", "out/new"}}) {
      const Finished result = scratch.vistrel("convert " + inputs + " --phase mono -o " + to);
      EXPECT_EQ(result.status, 2);
      EXPECT_EQ(result.err, std::string("vistrel: -o ") + to +
                                ": it takes a single picture; several inputs, or a folder of "
                                "inputs, need a folder, such as -o " +
                                folder + "/\n");
    }
  scratch.write("two.pgm", scratch.read("a.pgm") + scratch.read("b.pgm"));
  EXPECT_EQ(scratch.vistrel("convert two.pgm --phase mono -o png:-").err,
            "vistrel: two.pgm: it has 2 frames: -o png:- takes one; --frame N selects it; raw:-, "
            "y4m:- and a folder, such as -o pictures/, take all\n");
  const Finished none =
      scratch.run({VISTREL_PROGRAM, "convert", "a.pgm", "--phase", "mono", "-o", ""});
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.err, "vistrel: -o: the name of a picture or of a folder is expected\n");
}

TEST_F(Jobs, NamesOfFilmsAreThoseOfFiles) {
  const auto expectUsage = [this](const std::string& to, const std::string& text) {
    const Finished result = scratch.vistrel("convert a.pgm --phase mono -o " + to);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "vistrel: -o " + to + ": " + text + "\n");
  };
  expectUsage("y4m:film", "y4m:- is standard output; the name of a file would be film.y4m");
  expectUsage("RAW:x", "RAW:- is standard output; the name of a file would be x.RAW");
  expectUsage("a:b", "there is no such folder; a:b/ makes one, a:b.png a picture");
  fs::create_directory(scratch / "a.y4m");
  expectUsage("a.y4m", "a film is a file, and this is a folder; a.y4m/ takes pictures");
  EXPECT_EQ(scratch.vistrel("convert a.pgm --phase mono -o a.y4m/").status, 0);
  EXPECT_TRUE(fs::exists(scratch / "a.y4m/a.png"));
}

TEST_F(Jobs, NoInputIsOverwritten) {
  EXPECT_EQ(scratch.vistrel("convert a.pgm --phase mono -o b.png").err, "");
  const std::string picture = scratch.read("b.png");
  const Finished result = scratch.vistrel("convert a.pgm b.png --phase mono -o . --overwrite");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "vistrel: -o ./b.png: it is the same file as the input b.png\n");
  EXPECT_EQ(scratch.read("b.png"), picture);
}

TEST_F(Jobs, FoldersAreMade) {
  EXPECT_EQ(scratch.vistrel("convert a.pgm b.pgm --phase mono -o new/deeper").err, "");
  EXPECT_EQ(scratch.vistrel("convert c.pgm --phase mono -o other/ --manifest other/m.jsonl").err,
            "");
  EXPECT_EQ(scratch.vistrel("convert c.pgm --phase mono -o third/c.PNG").err, "");
  EXPECT_EQ(scratch.vistrel("convert a.pgm b.pgm --phase mono -o dry --dry-run").status, 0);
  EXPECT_EQ(scratch.names(),
            (Names{"a.pgm", "b.pgm", "bad.pgm", "c.pgm", "new/deeper/a.png", "new/deeper/b.png",
                   "other/c.png", "other/m.jsonl", "third/c.PNG"}));
  EXPECT_FALSE(fs::exists(scratch / "dry"));
}

TEST_F(Jobs, OfSeveralInputsNeedAFolder) {
  scratch.write("notes", "");
  const Finished file = scratch.vistrel("convert a.pgm b.pgm --phase mono -o notes");
  EXPECT_EQ(file.status, 2);
  EXPECT_EQ(file.err, "vistrel: -o notes: a folder is expected; this is a file\n");
}

TEST_F(Jobs, NeedNamesOfTheirOwn) {
  fs::create_directory(scratch / "more");
  put("more/a.pgm", 1);
  const Finished result = convert("a.pgm more/a.pgm");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err,
            "vistrel: -o out/a.png: both a.pgm and more/a.pgm would be written there\n");
}

// m.pgm and m.png would both become m.png.
TEST_F(Jobs, KeepTheExtensionsOfFramesWithOneName) {
  fs::create_directory(scratch / "in");
  put("in/m.pgm", 1);
  put("in/m.pnm", 2);
  put("in/n.pgm", 3);
  EXPECT_EQ(convert("in").err, "");
  EXPECT_EQ(valueOf("out/m.pgm.png"), 1u);
  EXPECT_EQ(valueOf("out/m.pnm.png"), 2u);
  EXPECT_TRUE(fs::exists(scratch / "out/n.png"));
  EXPECT_FALSE(fs::exists(scratch / "out/m.png"));
}

TEST_F(Jobs, KeepSubFolders) {
  fs::create_directories(scratch / "in/1/x");
  fs::create_directories(scratch / "in/2");
  fs::create_directories(scratch / "in/.hidden");
  fs::create_directory_symlink("..", scratch / "in/2/loop");
  put("in/img.pgm", 1);
  put("in/1/img.pgm", 2);
  put("in/2/img.pgm", 3);
  put("in/1/x/img.pgm", 4);
  put("in/.hidden/img.pgm", 5);
  for (const std::string folder : {"in", "in/"}) {
    EXPECT_EQ(convert(folder + " -r --overwrite").err, "");
    EXPECT_EQ(valueOf("out/img.png"), 1u);
    EXPECT_EQ(valueOf("out/1/img.png"), 2u);
    EXPECT_EQ(valueOf("out/2/img.png"), 3u);
    EXPECT_EQ(valueOf("out/1/x/img.png"), 4u);
    const auto pictures = fs::recursive_directory_iterator(scratch / "out");
    EXPECT_EQ(std::count_if(begin(pictures), end(pictures),
                            [](const auto& entry) { return entry.is_regular_file(); }),
              4);
    fs::remove_all(scratch / "out");
  }
  const Finished inside = scratch.vistrel("convert in -r --phase mono -o in/1/pictures");
  EXPECT_EQ(inside.status, 2);
  EXPECT_EQ(inside.err.rfind("vistrel: -o in/1/pictures: it is the input folder in, ", 0), 0u)
      << inside.err;
}

// Each run of an array makes its part, and they make all pictures together, in any order.
TEST_F(Jobs, AreDividedIntoShards) {
  scratch.write("many.pgm", scratch.read("a.pgm") + scratch.read("b.pgm") + scratch.read("c.pgm"));
  const std::string inputs = "a.pgm many.pgm b.pgm --shard ";
  EXPECT_EQ(convert(inputs + "3/3").err, "");
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch / "out"), {}), 1);
  EXPECT_TRUE(fs::exists(scratch / "out/many_000001.png"));
  EXPECT_EQ(convert(inputs + "1/3").err, "");
  EXPECT_EQ(convert(inputs + "2/3").err, "");
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch / "out"), {}), 5);
  EXPECT_EQ(convert("a.pgm --shard 2/2").status, 0) << "nothing to do";
  EXPECT_NE(convert(inputs + "1/3").err.find("up to date: 2 of 2"), std::string::npos);
}

TEST_F(Jobs, TypesHaveOtherNames) {
  for (const std::string type : {"tif", "jpeg"}) {
    EXPECT_EQ(convert("a.pgm --type " + type).err, "");
    EXPECT_TRUE(fs::exists(scratch / ("out/a." + type)));
  }
}

TEST_F(Jobs, OfPnmAreGrayOrColour) {
  EXPECT_EQ(convert("a.pgm --type pnm").err, "");
  EXPECT_EQ(scratch.read("out/a.pnm"), scratch.read("a.pgm"));
  EXPECT_EQ(scratch.vistrel("convert b.pgm --phase rggb --type pnm -o out").err, "");
  EXPECT_EQ(scratch.read("out/b.pnm").substr(0, 3), "P6\n");
}

}  // namespace
}  // namespace vistrel
