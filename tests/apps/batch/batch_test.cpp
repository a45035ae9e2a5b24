// Many frames at once: which are done, which are not, and what is reported.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/apps/batch/batch_test.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Names = std::vector<std::string>;

struct Batch : BatchTest {};

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
  EXPECT_EQ(result.err.rfind("vistrel: --jobs 129: a whole number from 0 to 128 is expected", 0),
            0u)
      << result.err;
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

// Nothing is done, and not every input has been tried.
TEST_F(Batch, StatusIfNothingIsDone) {
  EXPECT_EQ(convert("bad.pgm a.pgm b.pgm").status, 1) << "the others were not begun";
  EXPECT_EQ(convert("missing.pgm a.pgm b.pgm").status, 4);
  EXPECT_EQ(convert("a.pgm missing.pgm b.pgm").status, 1) << "one is done";
  EXPECT_EQ(convert("a.pgm missing.pgm").status, 1) << "one is up to date";
  EXPECT_EQ(scratch.names(), (Names{"a.pgm", "b.pgm", "bad.pgm", "c.pgm", "out/a.png"}));
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
       {"-o full/new/a.png", "-o full/a.png", "-o full", "-o out/device.png", "-o a.pgm/a.png",
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

TEST_F(Batch, IsSummedUp) {
  EXPECT_EQ(convert("a.pgm").summary, "") << "not a single picture";
  const std::string summary = convert("a.pgm b.pgm bad.pgm c.pgm").summary;
  EXPECT_EQ(summary.rfind("vistrel: 1 made, 1 up to date, 1 failed, 1 left in ", 0), 0u) << summary;
  EXPECT_NE(summary.find(" frames/s, "), std::string::npos) << summary;
  EXPECT_EQ(summary.substr(summary.size() - 6), " MB/s\n");
  EXPECT_EQ(convert("a.pgm b.pgm --dry-run").summary, "");
}

TEST_F(Batch, IsQuiet) {
  scratch.write("in.raw", std::string(100, ' '));
  const std::string command = "convert in.raw bad.pgm -s 7x7 --bits 8 --phase mono -o out ";
  EXPECT_NE(scratch.vistrel(command).err, "");
  const Finished quiet = scratch.vistrel(command + "--quiet --overwrite");
  EXPECT_EQ(
      quiet.err,
      "vistrel: bad.pgm: the file is too short: 7x7 samples of 8 bits do not fit its 9 bytes\n");
  EXPECT_EQ(quiet.summary, "");
  EXPECT_EQ(scratch.vistrel("develop a.pgm b.pgm --phase mono -o out -q").out, "");
  EXPECT_EQ(convert("a.pgm -q --progress always").status, 2);
}

// One line for the first frame that has it, one for all others.
TEST_F(Batch, NotesAboutManyFramesAppearOnce) {
  const Finished result = convert("a.pgm b.pgm c.pgm -a vng");
  EXPECT_EQ(result.err,
            "vistrel: a.pgm: --algorithm vng has no effect: the frame is mono\n"
            "vistrel: 2 more: --algorithm vng has no effect: the frame is mono\n");
}

}  // namespace
}  // namespace vistrel
