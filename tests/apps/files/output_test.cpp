// Output files: complete or absent, and never over a file that is still needed.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

// Incompressible noise.
uint32_t noise(uint32_t x, uint32_t y) {
  uint32_t v = x * 73856093 ^ y * 19349663;
  v = (v ^ v >> 13) * 0x5BD1E995;
  return (v ^ v >> 15) >> 24;
}

struct Output : ::testing::Test {
  Scratch scratch;
  Output() { scratch.write("in.pgm", pgm(64, 64, 255, noise)); }

  Finished convert(const std::string& to, const std::function<void()>& prepare = {}) const {
    return scratch.vistrel("convert in.pgm --phase mono -o " + to, prepare);
  }
  void expectFailure(const std::string& to, int status, const std::string& text) const {
    const Names before = scratch.names();
    const Finished result = convert(to);
    EXPECT_EQ(result.status, status) << to;
    EXPECT_EQ(result.err, "vistrel: " + text + "\n");
    EXPECT_EQ(scratch.names(), before);
  }
};

TEST_F(Output, ReplacesExistingFiles) {
  scratch.write("out.png", "old");
  chmod((scratch / "out.png").c_str(), 0640);
  EXPECT_EQ(convert("out.png").status, 0);
  EXPECT_EQ(readPng(scratch / "out.png").width, 64u);
  EXPECT_EQ(scratch.names(), (Names{"in.pgm", "out.png"}));
  EXPECT_EQ(fs::status(scratch / "out.png").permissions(), fs::perms{0640});
}

TEST_F(Output, NewFilesFollowTheUmask) {
  EXPECT_EQ(convert("out.png", [] { umask(027); }).status, 0);
  EXPECT_EQ(fs::status(scratch / "out.png").permissions(), fs::perms{0640});
}

TEST_F(Output, LinksStayLinks) {
  fs::create_directory(scratch / "elsewhere");
  scratch.write("elsewhere/real.png", "old");
  fs::create_symlink("elsewhere/real.png", scratch / "out.png");
  EXPECT_EQ(convert("out.png").status, 0);
  EXPECT_TRUE(fs::is_symlink(scratch / "out.png"));
  EXPECT_EQ(readPng(scratch / "elsewhere/real.png").width, 64u);
}

TEST_F(Output, IsNotTheInput) {
  expectFailure("in.pgm", 2, "-o in.pgm: it is the same file as the input in.pgm");
  expectFailure("./in.pgm", 2, "-o ./in.pgm: it is the same file as the input in.pgm");
  fs::create_symlink("in.pgm", scratch / "soft.pgm");
  fs::create_hard_link(scratch / "in.pgm", scratch / "hard.pgm");
  expectFailure("soft.pgm", 2, "-o soft.pgm: it is the same file as the input in.pgm");
  expectFailure("hard.pgm", 2, "-o hard.pgm: it is the same file as the input in.pgm");
  EXPECT_EQ(scratch.read("in.pgm"), pgm(64, 64, 255, noise));
}

TEST_F(Output, FolderIsMade) {
  EXPECT_EQ(convert("new/folder/out.png").status, 0);
  EXPECT_EQ(convert("other/").status, 0);
  EXPECT_EQ(scratch.names(), (Names{"in.pgm", "new/folder/out.png", "other/in.png"}));
}

TEST_F(Output, FolderIsAFile) {
  scratch.write("file", "");
  expectFailure("file/out.png", 4, "in.pgm: file/out.png cannot be written: Not a directory");
}

TEST_F(Output, FolderIsNotWritable) {
  if (!fs::exists("/proc/self")) GTEST_SKIP() << "no /proc";
  expectFailure("/proc/out.png", 4,
                "in.pgm: /proc/out.png cannot be written: No such file or directory");
}

TEST_F(Output, DeviceIsNotReplaced) {
  fs::create_symlink("/dev/full", scratch / "out.png");
  expectFailure("out.png", 4, "in.pgm: out.png cannot be written: it is not a regular file");
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(Output, FileSizeLimit) {
  for (const std::string to : {"out.png", "out.pgm"}) {
    scratch.write(to, "old");
    const Finished result = convert(to, [] {
      const rlimit limit{1000, 1000};
      setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.err, "vistrel: in.pgm: " + to + " cannot be written: File too large\n");
    EXPECT_EQ(scratch.read(to), "old");
  }
  EXPECT_EQ(scratch.names(), (Names{"in.pgm", "out.pgm", "out.png"}));
}

// A disk of two pages in a private namespace.
void mountTinyDisk() {
  const bool mounted = unshare(CLONE_NEWNS) == 0 &&
                       mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                       mount("none", "disk", "tmpfs", 0, "size=8k") == 0;
  if (!mounted) _exit(99);
}

TEST_F(Output, DiskIsFull) {
  fs::create_directory(scratch / "disk");
  for (const std::string to : {"disk/out.png", "disk/out.pgm"}) {
    scratch.write("in.pgm", pgm(200, 200, 255, noise));
    const Finished result = scratch.run(
        {"sh", "-c",
         "\"$0\" convert in.pgm --phase mono -o " + to + "; status=$?; ls -A disk; exit $status",
         VISTREL_PROGRAM},
        mountTinyDisk);
    if (result.status == 99) GTEST_SKIP() << "only root may mount a small disk";
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.err,
              "vistrel: in.pgm: " + to + " cannot be written: No space left on device\n");
    EXPECT_EQ(result.out, "") << "files were left on the disk";
  }
}

struct ManyInputs : ::testing::Test {
  Scratch scratch;
  ManyInputs() {
    scratch.write("a.pgm", pgm(8, 8, 255, noise));
    scratch.write("b.pgm", pgm(9, 9, 255, noise));
    scratch.write("bad.pgm", "P5\n1 1\n0\n");
    fs::create_directory(scratch / "out");
  }
  Finished convert(const std::string& inputs, const std::string& to = "out") const {
    return scratch.vistrel("convert --phase mono -o " + to + " " + inputs);
  }
};

TEST_F(ManyInputs, GoToAFolder) {
  const Finished result = convert("a.pgm b.pgm");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "") << "no bar where nobody watches";
  EXPECT_EQ(readPng(scratch / "out/a.png").width, 8u);
  EXPECT_EQ(readPng(scratch / "out/b.png").width, 9u);
}

TEST_F(ManyInputs, FailOneByOne) {
  const Finished some = convert("--keep-going a.pgm bad.pgm missing.pgm b.pgm");
  EXPECT_EQ(some.status, 1);
  EXPECT_EQ(some.err,
            "vistrel: bad.pgm: maxval 0: 1 to 65535 are allowed\n"
            "vistrel: missing.pgm: cannot be read: No such file or directory\n");
  EXPECT_EQ(scratch.names(), (Names{"a.pgm", "b.pgm", "bad.pgm", "out/a.png", "out/b.png"}));
}

TEST_F(ManyInputs, FailAll) {
  scratch.write("worse.pgm", "");
  EXPECT_EQ(convert("--keep-going bad.pgm worse.pgm").status, 3);
  EXPECT_EQ(convert("--keep-going bad.pgm missing.pgm").status, 4);
  EXPECT_EQ(convert("--keep-going missing.pgm missing2.pgm").status, 4);
}

}  // namespace
}  // namespace vistrel
