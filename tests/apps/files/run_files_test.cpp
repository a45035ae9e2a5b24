// Files that a run reads and writes, or writes twice, and output that is lost.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct NothingLost : ::testing::Test {
  Scratch scratch;
  NothingLost() {
    scratch.write("in.pgm", pgm(4, 4, 1023, [](uint32_t x, uint32_t) { return x; }));
    fs::create_directory(scratch / "out");
    fs::create_directory_symlink("out", scratch / "link");
  }
  // The program rejects the two files and changes neither.
  void expectRejection(const std::string& command, const std::string& text) const {
    const Names before = scratch.names();
    const Finished result = scratch.vistrel(command);
    EXPECT_EQ(result.status, 2) << command;
    EXPECT_EQ(result.err, "vistrel: " + text + "\n");
    EXPECT_EQ(scratch.names(), before);
  }
  void expectNoManifest(const std::string& to, const std::string& manifest,
                        const std::string& picture) const {
    expectRejection("convert in.pgm --phase mono -o " + to + " --manifest " + manifest,
                    "--manifest " + manifest + ": it is the same file as -o " + picture);
  }
};

TEST_F(NothingLost, AManifestIsNoPicture) {
  expectNoManifest("x.png", "x.png", "x.png");
  expectNoManifest("./x.png", "out/../x.png", "./x.png");
  expectNoManifest("out", "out/in.png", "out/in.png");
  expectNoManifest("link", "out/in.png", "link/in.png");
  scratch.write("out/in.png", "old");
  fs::create_symlink("out/in.png", scratch / "m");
  expectNoManifest("link --overwrite", "m", "link/in.png");
  EXPECT_EQ(scratch.read("out/in.png"), "old");
}

TEST_F(NothingLost, ACurveIsNeitherPictureNorManifest) {
  const std::string curve = pgm(1024, 1, 255, [](uint32_t, uint32_t) { return 7; });
  scratch.write("curve.pgm", curve);
  const std::string options = " in.pgm --phase mono --curve curve.pgm ";
  expectRejection("convert" + options + "-o curve.pgm",
                  "-o curve.pgm: it is the same file as --curve curve.pgm");
  expectRejection("convert" + options + "-o x.png --manifest ./curve.pgm",
                  "--manifest ./curve.pgm: it is the same file as --curve curve.pgm");
  fs::create_symlink("curve.pgm", scratch / "sheet.png");
  expectRejection("compare in.pgm --phase rggb --curve curve.pgm -o sheet.png",
                  "-o sheet.png: it is the same file as --curve curve.pgm");
  EXPECT_EQ(scratch.read("curve.pgm"), curve);
}

TEST_F(NothingLost, ScoresAreNoPlot) {
  scratch.write("true.png", "");
  expectRejection("report --reference true.png -o out --json link/report.png",
                  "--json link/report.png: it is the same file as -o out/report.png");
}

TEST_F(NothingLost, StandardInputIsAFileToo) {
  const Finished result = scratch.vistrel("convert - --phase mono -o in.pgm",
                                          [] { dup2(open("in.pgm", O_RDONLY), STDIN_FILENO); });
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "vistrel: -o in.pgm: it is the same file as the input -\n");
}

TEST_F(NothingLost, OutputToAFullDiskIsReported) {
  for (const std::string command :
       {"info in.pgm", "info in.pgm --json", "cfa rggb", "formats", "formats --json", "--help",
        "--version", "convert --help", "convert in.pgm --phase mono -o x.png --json",
        "convert in.pgm --phase mono -o x.png --dry-run"}) {
    const Finished result =
        scratch.vistrel(command, [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_EQ(result.status, 4) << command;
    EXPECT_NE(result.err.find("cannot"), std::string::npos) << command;
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
  }
}

TEST_F(NothingLost, ClosedOutputIsReported) {
  const Finished info = scratch.vistrel("info in.pgm", [] { close(STDOUT_FILENO); });
  EXPECT_EQ(info.status, 4);
  EXPECT_EQ(info.err, "vistrel: standard output cannot be written: Bad file descriptor\n");
  // Nothing is written into the picture's file if it takes the descriptor of standard output.
  const Finished report = scratch.vistrel("convert in.pgm --phase mono --depth 16 -o x.pgm --json",
                                          [] { close(STDOUT_FILENO); });
  EXPECT_EQ(report.status, 4);
  EXPECT_EQ(scratch.read("x.pgm"), scratch.read("in.pgm"));
  // No error if there is no output.
  EXPECT_EQ(scratch
                .vistrel("convert in.pgm --phase mono -o y.png",
                         [] {
                           for (const int stream : {0, 1, 2}) close(stream);
                         })
                .status,
            0);
}

}  // namespace
}  // namespace vistrel
