// Many frames at once: which are done, which are not, and what is reported.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Names = std::vector<std::string>;

// Frames a.pgm, b.pgm, c.pgm of one value each, a minute old, and an invalid one.
struct Batch : ::testing::Test {
  Scratch scratch;
  Batch() {
    for (const char* name : {"a", "b", "c"}) put(name + std::string(".pgm"), 10 * name[0] % 256);
    scratch.write("bad.pgm", "P5\n1 1\n0\n");
    fs::create_directory(scratch / "out");
  }
  void put(const std::string& name, uint32_t value) const {
    scratch.write(name, pgm(4, 3, 255, [value](uint32_t, uint32_t) { return value; }));
    age(name, 60);
  }
  void age(const std::string& name, int seconds) const {
    const auto now = fs::file_time_type::clock::now();
    fs::last_write_time(scratch / name, now - std::chrono::seconds(seconds));
  }
  Finished convert(const std::string& arguments) const {
    return scratch.vistrel("convert --phase mono -o out " + arguments);
  }
  uint32_t valueOf(const std::string& picture) const {
    return readPng(scratch / picture).samples[0];
  }
};

// Three bytes are left over; the warning appears once, although gains differ between the frames.
TEST_F(Batch, WarningsAboutAnInputAppearOnce) {
  std::string other(64, '\x20');
  other[0] = '\x40';  // only red
  scratch.write("in.raw", std::string(64, '\x10') + other + std::string(64, '\x10') + "end");
  const Finished result =
      scratch.vistrel("convert in.raw -s 8x8 --bits 8 --phase rggb --wb auto -o out");
  EXPECT_EQ(result.status, 0);
  const std::string left = "vistrel: in.raw: 3 bytes after the last frame are ignored\n";
  EXPECT_EQ(result.err.find(left), result.err.rfind(left)) << result.err;
  EXPECT_NE(result.err.find(left), std::string::npos) << result.err;
}

TEST_F(Batch, HasAStreamForEveryWorker) {
  scratch.write("in.raw", std::string(300 * 36, 'x'));
  const std::string arguments = "convert in.raw -s 6x6 --bits 8 --phase rggb -o out -j ";
  EXPECT_EQ(scratch.vistrel(arguments + "128").status, 0);
  EXPECT_TRUE(fs::exists(scratch / "out/in_000299.png"));
  const Finished result = scratch.vistrel(arguments + "129");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err.rfind("vistrel: --jobs: Value 129 not in range 0 to 128", 0), 0u)
      << result.err;
}

TEST_F(Batch, DanglingLinksAreIgnored) {
  fs::create_directory(scratch / "in");
  fs::create_symlink("loop", scratch / "in/loop.pgm");
  put("in/a.pgm", 7);
  const Finished result = convert("in");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(valueOf("out/a.png"), 7u);
}

TEST_F(Batch, StopsAfterTheFirstFailure) {
  const Finished result = convert("a.pgm bad.pgm b.pgm c.pgm");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            "vistrel: bad.pgm: maxval 0: 1 to 65535 are allowed\n"
            "vistrel: not begun: 2 of 4; --keep-going continues after a failure\n");
  EXPECT_TRUE(fs::exists(scratch / "out/a.png"));
  EXPECT_FALSE(fs::exists(scratch / "out/b.png"));
}

TEST_F(Batch, SkipsWhatIsUpToDate) {
  EXPECT_EQ(convert("a.pgm b.pgm").err, "");
  put("a.pgm", 7);
  age("a.pgm", -60);  // later than its picture
  put("b.pgm", 8);    // as old as before, so the change goes unnoticed
  const Finished again = convert("a.pgm b.pgm");
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.err,
            "vistrel: up to date: 1 of 2, regardless of their options; --overwrite remakes "
            "them\n");
  EXPECT_EQ(valueOf("out/a.png"), 7u);
  EXPECT_EQ(valueOf("out/b.png"), 10u * 'b' % 256);
  EXPECT_EQ(convert("a.pgm b.pgm --overwrite").err, "");
  EXPECT_EQ(valueOf("out/b.png"), 8u);
}

TEST_F(Batch, ANamedPictureIsAlwaysMade) {
  for (const uint32_t value : {5u, 6u}) {
    put("a.pgm", value);
    EXPECT_EQ(scratch.vistrel("convert a.pgm --phase mono -o a.png").err, "");
    EXPECT_EQ(valueOf("a.png"), value);
  }
}

TEST_F(Batch, ACurveIsASourceToo) {
  const auto curve = [this](const char* value) {
    std::string table;
    for (int i = 0; i < 1024; ++i) table += value;
    scratch.write("curve.txt", table);
  };
  scratch.write("w.pgm", pgm(4, 3, 1023, [](uint32_t, uint32_t) { return 5; }));
  age("w.pgm", 60);
  curve("11 ");
  age("curve.txt", 60);
  EXPECT_EQ(convert("w.pgm --curve curve.txt").err, "");
  EXPECT_EQ(valueOf("out/w.png"), 11u);
  EXPECT_NE(convert("w.pgm --curve curve.txt").err, "");
  curve("12 ");
  age("curve.txt", -60);
  EXPECT_EQ(convert("w.pgm --curve curve.txt").err, "");
  EXPECT_EQ(valueOf("out/w.png"), 12u);
}

TEST_F(Batch, EveryFrameOfAFileGetsAPicture) {
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

TEST_F(Batch, TooManyFramesAreRejected) {
  scratch.write("dots.raw", std::string(1'000'001, ' '));
  const Finished result = convert("dots.raw -s 1x1 --bits 8");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err,
            "vistrel: dots.raw: it has 1000001 frames: at most 1000000 are allowed at once; "
            "--frame N selects one\n");
}

TEST_F(Batch, AFolderStandsForItsFiles) {
  fs::create_directories(scratch / "in/deeper");
  for (const std::string name : {"in/y.pgm", "in/x.pgm", "in/.hidden.pgm", "in/deeper/z.pgm"})
    put(name, 1);
  EXPECT_EQ(convert("in").err, "");
  EXPECT_TRUE(fs::exists(scratch / "out/x.png"));
  EXPECT_TRUE(fs::exists(scratch / "out/y.png"));
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch / "out"), {}), 2);
}

TEST_F(Batch, OnlyFramesOfAFolderAreRead) {
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

TEST_F(Batch, AFolderWithoutFramesIsRejected) {
  fs::create_directory(scratch / "empty");
  EXPECT_EQ(convert("empty").status, 3);
  EXPECT_EQ(convert("empty").err, "vistrel: empty: there is no frame in this folder\n");
  EXPECT_EQ(convert("empty a.pgm --keep-going").status, 1);
  EXPECT_TRUE(fs::exists(scratch / "out/a.png"));
}

TEST_F(Batch, PicturesAreNotWrittenAmongTheFramesOfAFolder) {
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

TEST_F(Batch, StandardOutputTakesASinglePicture) {
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

// Nothing is done, and not every input has been tried.
TEST_F(Batch, StatusIfNothingIsDone) {
  EXPECT_EQ(convert("bad.pgm a.pgm b.pgm").status, 1) << "the others were not begun";
  EXPECT_EQ(convert("missing.pgm a.pgm b.pgm").status, 4);
  EXPECT_EQ(convert("a.pgm missing.pgm b.pgm").status, 1) << "one is done";
  EXPECT_EQ(convert("a.pgm missing.pgm").status, 1) << "one is up to date";
  EXPECT_EQ(scratch.names(), (Names{"a.pgm", "b.pgm", "bad.pgm", "c.pgm", "out/a.png"}));
}

TEST_F(Batch, NoInputIsOverwritten) {
  EXPECT_EQ(scratch.vistrel("convert a.pgm --phase mono -o b.png").err, "");
  const std::string picture = scratch.read("b.png");
  const Finished result = scratch.vistrel("convert b.pgm b.png --phase mono -o . --overwrite");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "vistrel: -o ./b.png: it is the same file as the input b.png\n");
  EXPECT_EQ(scratch.read("b.png"), picture);
}

TEST_F(Batch, DryRunWritesNothing) {
  EXPECT_EQ(convert("b.pgm").err, "");
  const Names before = scratch.names();
  const Finished result = convert("a.pgm bad.pgm b.pgm --dry-run --manifest m.jsonl --overwrite");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out,
            "a.pgm -> out/a.png: 4x3, gray of 8 bits\nb.pgm -> out/b.png: 4x3, gray of 8 bits\n");
  EXPECT_EQ(result.err, "vistrel: bad.pgm: maxval 0: 1 to 65535 are allowed\n");
  EXPECT_EQ(convert("a.pgm b.pgm --dry-run").out,
            "a.pgm -> out/a.png: 4x3, gray of 8 bits\nb.pgm -> out/b.png: up to date\n");
  EXPECT_EQ(scratch.names(), before);
}

TEST_F(Batch, DryRunFailsIfTheRunWould) {
  fs::create_directory(scratch / "full");
  for (const std::string folder : {"", "full", "out"})
    fs::permissions(scratch / folder, folder == "full" ? fs::perms{0555} : fs::perms{0777});
  fs::create_symlink("/dev/null", scratch / "out/device.png");
  scratch.write("lines", "");
  fs::permissions(scratch / "lines", fs::perms{0444});
  const auto nobody = [] {
    if (geteuid() == 0 && setuid(65534) != 0) _exit(99);  // a user without special permissions
  };
  for (const std::string options :
       {"-o no/a.png", "-o full/a.png", "-o full", "-o out/device.png", "-o a.pgm/a.png",
        "-o out/a.png --manifest full/m", "-o out/a.png --manifest lines"}) {
    const Finished dry = scratch.vistrel("convert a.pgm --phase mono --dry-run " + options, nobody);
    const Finished run = scratch.vistrel("convert a.pgm --phase mono " + options, nobody);
    EXPECT_EQ(dry.status, 4) << options;
    EXPECT_EQ(run.status, 4) << options;
    EXPECT_EQ(dry.out, "");
    EXPECT_TRUE(dry.err == run.err || options.find("manifest full") != std::string::npos);
  }
}

TEST_F(Batch, TrailingBytesCauseAWarning) {
  scratch.write("frames.raw", std::string(100, ' '));  // two frames of 49
  const std::string command = "convert frames.raw -s 7x7 --bits 8 --phase mono -o out ";
  const std::string warning = "2 bytes after the last frame are ignored";
  const std::string line = "vistrel: frames.raw: " + warning + "\n";
  EXPECT_EQ(scratch.vistrel(command + "--dry-run").err, line);
  const Finished result = scratch.vistrel(command + "--json");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, line) << "once, not for each frame";
  const json outputs = json::parse(result.out).at("inputs").at(0).at("outputs");
  EXPECT_EQ(outputs.at(1).at("warnings"), json{warning});
  EXPECT_EQ(scratch.vistrel("unpack frames.raw -s 7x7 --pixfmt Mono8 -o x.pgm").err, line);
  scratch.write("frames.raw", std::string(99, ' '));
  EXPECT_EQ(scratch.vistrel(command + "--overwrite").err,
            "vistrel: frames.raw: 1 byte after the last frame is ignored\n");
}

TEST_F(Batch, JsonReport) {
  EXPECT_EQ(convert("b.pgm").err, "");
  const Finished result = convert("a.pgm b.pgm bad.pgm c.pgm --json");
  EXPECT_EQ(result.status, 1);
  const json report = json::parse(result.out);
  EXPECT_EQ(report.at("exit_status"), 1);
  EXPECT_GE(report.at("seconds"), 0.0);
  ASSERT_EQ(report.at("inputs").size(), 4u);
  const auto output = [&report](size_t i) { return report.at("inputs")[i].at("outputs").at(0); };
  EXPECT_EQ(report.at("inputs")[3].at("input"), "c.pgm");
  EXPECT_EQ(output(0).at("output"), "out/a.png");
  EXPECT_EQ(output(0).at("status"), "made");
  EXPECT_EQ(output(0).at("width"), 4);
  EXPECT_EQ(output(0).at("height"), 3);
  EXPECT_EQ(output(0).at("channels"), 1);
  EXPECT_EQ(output(0).at("bits"), 8);
  EXPECT_GT(output(0).at("seconds"), 0.0);
  EXPECT_EQ(output(1).at("status"), "up to date");
  EXPECT_EQ(output(2).at("status"), "failed");
  EXPECT_EQ(output(2).at("error"), "maxval 0: 1 to 65535 are allowed");
  EXPECT_EQ(output(3).at("status"), "not begun");
}

TEST_F(Batch, JsonProgress) {
  const Finished result = convert("a.pgm bad.pgm --progress json");
  std::istringstream lines(result.err);
  std::vector<json> objects;
  for (std::string line; std::getline(lines, line);) objects.push_back(json::parse(line));
  ASSERT_EQ(objects.size(), 3u);
  EXPECT_EQ(objects[0].at("done"), 1);
  EXPECT_EQ(objects[0].at("total"), 2);
  EXPECT_EQ(objects[1].at("done"), 2);
  EXPECT_EQ(objects[2].at("message"), "bad.pgm: maxval 0: 1 to 65535 are allowed");
}

TEST_F(Batch, AlwaysAndNeverShowABar) {
  EXPECT_NE(convert("a.pgm --progress always").err.find("[####################] 1/1"),
            std::string::npos);
  EXPECT_EQ(convert("a.pgm --overwrite --progress never").err, "");
}

}  // namespace
}  // namespace vistrel
