// The frames that a folder stands for.
#include <nlohmann/json.hpp>

#include "tests/apps/batch/batch_test.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

struct BatchInputs : BatchTest {};

TEST_F(BatchInputs, LinksThatLeadNowhereAreIgnored) {
  fs::create_directory(scratch / "in");
  fs::create_symlink("none", scratch / "in/dangling.pgm");
  fs::create_symlink("loop.pgm", scratch / "in/loop.pgm");
  put("in/a.pgm", 7);
  const Finished result = convert("in");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(valueOf("out/a.png"), 7u);
}

TEST_F(BatchInputs, AFolderStandsForItsFiles) {
  fs::create_directories(scratch / "in/deeper");
  for (const std::string name : {"in/y.pgm", "in/x.pgm", "in/.hidden.pgm", "in/deeper/z.pgm"})
    put(name, 1);
  EXPECT_EQ(convert("in").err, "");
  EXPECT_TRUE(fs::exists(scratch / "out/x.png"));
  EXPECT_TRUE(fs::exists(scratch / "out/y.png"));
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch / "out"), {}), 2);
}

TEST_F(BatchInputs, OnlyFramesOfAFolderAreRead) {
  fs::create_directory(scratch / "in");
  put("in/x.PGM", 1);
  scratch.write("in/README.txt", "about x.pgm");
  EXPECT_EQ(convert("in").err,
            "vistrel: in: ignoring files without the extension of a frame: README.txt\n");
  EXPECT_TRUE(fs::exists(scratch / "out/x.png"));
  scratch.write("in/y.raw", "123456789012");
  scratch.write("in/z", "");
  const Finished pgm = convert("in --overwrite --json");
  EXPECT_EQ(pgm.status, 0);
  EXPECT_EQ(json::parse(pgm.out).at("warnings"),
            json{"in: ignoring files without the extension of a frame: README.txt and 2 more"});
  const Finished headerless = convert("in -s 4x3 --bits 8 --overwrite");
  EXPECT_EQ(headerless.status, 0);
  EXPECT_EQ(
      headerless.err,
      "vistrel: in: ignoring files without the extension of a frame: README.txt and 2 more\n");
  EXPECT_EQ(valueOf("out/y.png"), uint32_t{'1'});
  scratch.write("in/bad.png", "");
  EXPECT_EQ(convert("in --keep-going --overwrite").status, 1) << "a frame by name, but damaged";
}

TEST_F(BatchInputs, AFolderWithoutFramesIsRejected) {
  fs::create_directory(scratch / "empty");
  EXPECT_EQ(convert("empty").status, 3);
  EXPECT_EQ(convert("empty").err, "vistrel: empty: there is no frame in this folder\n");
  const Finished named = scratch.vistrel("convert --phase mono empty -o pictures");
  EXPECT_EQ(named.status, 3);
  EXPECT_EQ(named.err, "vistrel: empty: there is no frame in this folder\n");
  EXPECT_EQ(convert("empty a.pgm --keep-going").status, 1);
  EXPECT_TRUE(fs::exists(scratch / "out/a.png"));
}

// Pictures are made beside their frames unless -o says where.
TEST_F(BatchInputs, PicturesOfEarlierRunsAreNoFrames) {
  fs::create_directory(scratch / "in");
  for (const std::string name : {"in/a.pgm", "in/b.pgm"}) put(name, 7);
  ASSERT_EQ(scratch.vistrel("develop --phase mono in/a.pgm").status, 0);
  ASSERT_EQ(scratch.vistrel("convert --phase mono in/a.pgm -o in/alone.png").status, 0);
  ASSERT_EQ(scratch.vistrel("convert --phase mono in/b.pgm --mosaic -o in/b.png").status, 0);
  fs::create_directory(scratch / "in/deeper");
  put("in/deeper/alone.pgm", 7);  // the picture of that name lies in another folder
  const Finished result = convert("in --recursive");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err.rfind("vistrel: in: ignoring pictures beside their frames: a.png\n", 0), 0u)
      << result.err;
  for (const char* name : {"a.png", "alone.png", "b.pgm.png", "b.png.png", "deeper/alone.png"})
    EXPECT_TRUE(fs::exists(scratch / "out" / name)) << name;
}

}  // namespace
}  // namespace vistrel
