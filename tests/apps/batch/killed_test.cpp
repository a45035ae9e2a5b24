// A batch that is killed, and several workers.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>

#include "tests/amount.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

constexpr int kFrames = 12;

struct Killed : ::testing::Test {
  Scratch scratch;
  Killed() {
    for (int i = 0; i < kFrames; ++i)
      scratch.write("in" + std::to_string(i) + ".pgm",
                    pgm(200, 150, 255, [i](uint32_t x, uint32_t y) {
                      const uint32_t v = (x * 73856093 ^ y * 19349663 ^ i * 83492791) * 0x5BD1E995;
                      return v >> 24;
                    }));
    for (const std::string folder : {"out", "whole"}) fs::create_directory(scratch / folder);
  }

  static std::string command(const std::string& folder, const std::string& options) {
    std::string text = "convert --phase rggb -a vng " + options + " -o " + folder;
    for (int i = 0; i < kFrames; ++i) text += " in" + std::to_string(i) + ".pgm";
    return text;
  }
  Files filesIn(const std::string& folder) const {
    Files files;
    for (const auto& entry : fs::directory_iterator(scratch / folder)) {
      const std::string name = entry.path().filename();
      files[name] = scratch.read(folder + "/" + name);
    }
    return files;
  }
  // That the run sums up; -1 if it doesn't.
  int madeAndLeft() const {
    int made = 0, left = 0;
    const std::string messages = scratch.read("messages");
    const int found = std::sscanf(
        messages.c_str(), "vistrel: interrupted: %d made, 0 failed, %d left in ", &made, &left);
    return found == 2 ? made + left : -1;
  }
  bool inTheMidst() const {
    bool unfinished = false, finished = false;
    for (const auto& [name, bytes] : filesIn("out"))
      (name[0] == '.' ? unfinished : finished) = true;
    return unfinished && finished;
  }

  pid_t start(const std::string& arguments) const {
    const pid_t child = fork();
    if (child != 0) return child;
    const std::string line = "exec \"$0\" " + arguments + " 2>messages";
    if (chdir((scratch / "").c_str()) != 0) _exit(126);
    execlp("sh", "sh", "-c", line.c_str(), VISTREL_PROGRAM, nullptr);
    _exit(127);
  }

  // Sends the signal while the program has finished some pictures and is writing another one;
  // returns the status of wait(). Starts again if the program finished first. A stop takes effect
  // some time after kill() returns, so we look only at a program that is known to stand still.
  int endWith(int signal, const std::string& options) const {
    for (;;) {
      for (const auto& [name, bytes] : filesIn("out")) fs::remove(scratch / ("out/" + name));
      const pid_t child = start(command("out", options));
      for (int status = 0;; usleep(200)) {
        kill(child, SIGSTOP);
        waitpid(child, &status, WUNTRACED);
        if (!WIFSTOPPED(status)) break;
        const bool now = inTheMidst();
        if (now) kill(child, signal);
        kill(child, SIGCONT);
        if (now && waitpid(child, &status, 0) == child) return status;
      }
    }
  }
};

TEST_F(Killed, LeavesWhatASecondRunCompletes) {
  EXPECT_EQ(scratch.vistrel(command("whole", "")).err, "");
  for (const std::string options : {"-j 1", "-j 3", "-j 3 --manifest m.jsonl"}) {
    const int status = endWith(SIGKILL, options);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(inTheMidst()) << "a file without its end is left";
    EXPECT_EQ(scratch.vistrel(command("out", options)).status, 0);
    EXPECT_TRUE(filesIn("out") == filesIn("whole")) << options;
  }
}

// At any moment from the start of the program to its end. VISTREL_AMOUNT in the environment is the
// number of moments.
TEST_F(Killed, LosesNothingAtAnyMoment) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(scratch.vistrel(command("whole", "")).err, "");
  const std::chrono::duration<double, std::micro> length = std::chrono::steady_clock::now() - begin;
  Files whole = filesIn("whole");
  std::mt19937 random(test::seed());
  std::uniform_real_distribution<> choice;
  const uint64_t moments = test::amount(5);
  for (uint64_t i = 0; i < moments; ++i) {
    for (const auto& [name, bytes] : filesIn("out")) fs::remove(scratch / ("out/" + name));
    const std::string options = i % 2 ? "-j 3 --manifest m.jsonl" : "-j 1";
    const pid_t child = start(command("out", options));
    usleep(static_cast<useconds_t>(length.count() * choice(random)));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    for (const auto& [name, bytes] : filesIn("out"))
      ASSERT_TRUE(name[0] == '.' || whole[name] == bytes) << name << ", moment " << i;
    ASSERT_EQ(scratch.vistrel(command("out", options)).status, 0);
    ASSERT_TRUE(filesIn("out") == whole) << "moment " << i;
  }
  std::printf("killed at %llu moments\n", static_cast<unsigned long long>(moments));
}

TEST_F(Killed, InterruptsLeaveOnlyCompleteFiles) {
  EXPECT_EQ(scratch.vistrel(command("whole", "")).err, "");
  Files whole = filesIn("whole");
  for (const auto& [signal, expected] : {std::pair{SIGINT, 130}, {SIGTERM, 143}}) {
    const int status = endWith(signal, "-j 3");
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == expected) << status;
    for (const auto& [name, bytes] : filesIn("out")) EXPECT_TRUE(whole[name] == bytes) << name;
    EXPECT_EQ(madeAndLeft(), kFrames) << scratch.read("messages");
  }
}

TEST_F(Killed, SaysThatItWasInterrupted) {
  for (const auto& [signal, expected] : {std::pair{"INT", 130}, {"TERM", 143}}) {
    const Finished result = scratch.run(
        {"sh", "-c",
         "sleep 1.5 | timeout --preserve-status -s $1 1 \"$0\" convert - -s 64x64 --bits 8 "
         "--phase rggb -o raw:-",
         VISTREL_PROGRAM, signal});
    EXPECT_EQ(result.status, expected);
    EXPECT_EQ(result.err, "vistrel: interrupted\n");
  }
}

TEST_F(Killed, KeepsFilesOfRunningPrograms) {
  const pid_t child = start(command("out", "-j 2"));
  int status = 0;
  while (!inTheMidst() && waitpid(child, &status, WNOHANG) == 0) usleep(200);
  EXPECT_EQ(scratch.vistrel("convert in0.pgm --phase rggb -o out/other.png").status, 0);
  if (status == 0) waitpid(child, &status, 0);
  EXPECT_EQ(status, 0) << "the other run took a file away";
}

TEST_F(Killed, WorkersMakeNoDifference) {
  scratch.write("in3.pgm", "P5\n1 1\n0\n");
  scratch.write("in7.pgm", "P5\n1 1\n");
  const Finished one = scratch.vistrel(command("whole", "--keep-going"));
  const Finished four = scratch.vistrel(command("out", "--keep-going -j 4"));
  EXPECT_EQ(one.status, 1);
  EXPECT_EQ(four.status, 1);
  EXPECT_EQ(one.err, four.err);
  EXPECT_EQ(filesIn("whole").size(), kFrames - 2u);
  EXPECT_TRUE(filesIn("out") == filesIn("whole"));
}

// Pictures take at least 90,000 bytes each.
TEST_F(Killed, WorkersThatCannotWriteLoseNothing) {
  EXPECT_EQ(scratch.vistrel(command("whole", "")).err, "");
  const Files whole = filesIn("whole");
  Files old;
  for (const auto& [name, bytes] : whole) scratch.write("out/" + name, old[name] = "old " + name);
  const std::string options = "-j 4 --overwrite --keep-going --manifest m.jsonl";
  const auto limit = [] {
    const rlimit size{50'000, 50'000};
    setrlimit(RLIMIT_FSIZE, &size);
  };
  const Finished all = scratch.vistrel(command("out", options), limit);
  EXPECT_EQ(all.status, 4);
  EXPECT_EQ(std::count(all.err.begin(), all.err.end(), '\n'), kFrames) << all.err;
  EXPECT_NE(all.err.find("in7.pgm: out/in7.png cannot be written: File too large\n"),
            std::string::npos);
  EXPECT_EQ(scratch.vistrel(command("out", "-j 4 --overwrite"), limit).status, 4);
  EXPECT_TRUE(filesIn("out") == old);
  EXPECT_EQ(scratch.read("m.jsonl"), "");
  EXPECT_EQ(scratch.vistrel(command("out", options)).status, 0);
  EXPECT_TRUE(filesIn("out") == whole);
}

// There is space for some new pictures in place of old ones, but not for all.
TEST_F(Killed, WorkersOnAFullDiskLoseNothing) {
  EXPECT_EQ(scratch.vistrel(command("whole", "")).err, "");
  const Files whole = filesIn("whole");
  for (const std::string folder : {"disk", "kept"}) fs::create_directory(scratch / folder);
  for (const auto& [capacity, expected] : {std::pair{"64k", 4}, {"512k", 1}}) {
    const std::string name = "size=" + std::string(capacity);
    const Finished result =
        scratch.run({"sh", "-c",
                     "for i in 0 3 9; do echo old >disk/in$i.png; done; \"$0\" " +
                         command("disk", "-j 4 --overwrite --keep-going") +
                         "; status=$?; rm -rf kept; cp -r disk kept; exit $status",
                     VISTREL_PROGRAM},
                    [&name] {
                      if (unshare(CLONE_NEWNS) != 0 ||
                          mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
                          mount("none", "disk", "tmpfs", 0, name.c_str()) != 0)
                        _exit(99);
                    });
    if (result.status == 99) GTEST_SKIP() << "only root may mount a small disk";
    EXPECT_EQ(result.status, expected) << capacity;
    size_t made = 0;
    const Files kept = filesIn("kept");
    for (const auto& [picture, bytes] : kept) {
      const bool isWhole = whole.count(picture) && bytes == whole.at(picture);
      EXPECT_TRUE(isWhole || bytes == "old\n") << picture;
      made += isWhole;
    }
    for (const std::string old : {"in0.png", "in3.png", "in9.png"}) EXPECT_EQ(kept.count(old), 1u);
    EXPECT_EQ(made > 0, expected == 1);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n') + static_cast<long>(made),
              kFrames);
    EXPECT_NE(result.err.find("cannot be written: No space left on device\n"), std::string::npos);
  }
}

#ifdef VISTREL_COUNT_STREAMS
TEST_F(Killed, AWorkerHoldsOneStream) {
  for (const auto& [options, workers] : {std::pair{"-j 1", 1}, {"-j 4", 4}, {"--dry-run", 0}}) {
    const Finished result = scratch.run(
        {"sh", "-c",
         "LD_PRELOAD=$0 exec \"$1\" " + command("out", options) + " --overwrite 9>streams",
         VISTREL_COUNT_STREAMS, VISTREL_PROGRAM});
    EXPECT_EQ(result.status, 0) << result.err;
    int taken = 0, back = 0, others = 0;
    const std::string streams = scratch.read("streams");
    ASSERT_EQ(std::sscanf(streams.c_str(), "%d taken, %d back, %d others", &taken, &back, &others),
              3);
    EXPECT_TRUE(workers ? taken >= 1 && taken <= workers : taken == 0)
        << options << ": " << streams;
    EXPECT_EQ(back, taken);
    EXPECT_EQ(others, 0);
  }
}
#endif

#ifdef VISTREL_FAILING_MALLOC
// Converts a small file with each of the program's allocations failing once.
TEST(FailingMalloc, IsReportedAndLeavesNoPartialFile) {
  const Scratch scratch;
  scratch.write("in.pgm", "P5\n4 4\n255\n0123456789abcdef");
  const Finished result = scratch.run(
      {"sh", "-c", "LD_PRELOAD=$0 exec \"$1\" convert in.pgm --phase mono -o out.pgm 9>statuses",
       VISTREL_FAILING_MALLOC, VISTREL_PROGRAM});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm"));
  EXPECT_EQ(scratch.names(), (std::vector<std::string>{"in.pgm", "out.pgm", "statuses"}));
  std::istringstream statuses(scratch.read("statuses"));
  size_t runs = 0, failures = 0;
  for (int n, status; statuses >> n >> status; ++runs) {
    ASSERT_TRUE(WIFEXITED(status)) << "allocation " << n << ": " << status;
    EXPECT_TRUE(WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == 3 || WEXITSTATUS(status) == 4)
        << "allocation " << n << ": " << status;
    failures += status != 0;
  }
  EXPECT_GT(failures, 500u) << "the library that lets them fail is not at work";
  EXPECT_EQ(static_cast<size_t>(std::count(result.err.begin(), result.err.end(), '\n')), failures)
      << "one line for each\n"
      << result.err;
}
#endif

}  // namespace
}  // namespace vistrel
