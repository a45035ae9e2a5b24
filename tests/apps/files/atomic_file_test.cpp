// Temporary files when the program ends.
#include "apps/files/atomic_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <memory>
#include <thread>
#include <vector>

#include "apps/error.h"
#include "apps/files/interrupts.h"
#include "tests/apps/program.h"

namespace vistrel::app {
namespace {

using ::testing::ExitedWithCode;
using Names = std::vector<std::string>;

void startAndRaise(const Scratch& scratch, int signal) {
  installSignalHandlers();
  AtomicFile file(scratch / "out.png"), second(scratch / "second.png");
  std::fputs("half a picture", file.stream());
  std::fflush(file.stream());
  if (scratch.names().size() != 3) _exit(1);  // both temporary files exist beside out.png
  std::raise(signal);
}

TEST(AtomicFileDeathTest, SignalsLeaveNothing) {
  const Scratch scratch;
  scratch.write("out.png", "old");
  EXPECT_EXIT(startAndRaise(scratch, SIGINT), ExitedWithCode(130), "");
  EXPECT_EXIT(startAndRaise(scratch, SIGTERM), ExitedWithCode(143), "");
  EXPECT_EXIT(startAndRaise(scratch, SIGHUP), ExitedWithCode(129), "");
  EXPECT_EQ(scratch.names(), Names{"out.png"});
  EXPECT_EQ(scratch.read("out.png"), "old");
}

[[noreturn]] void writeForEver(const std::filesystem::path& path) {
  for (;;) {
    AtomicFile file(path);
    std::fputs("a picture", file.stream());
  }
}

// Threads create files all the time; the program may end between any two of their steps.
void startThreadsAndRaise(const Scratch& scratch, int microseconds) {
  installSignalHandlers();
  for (int i = 0; i < 4; ++i)
    std::thread([&scratch] { writeForEver(scratch / "out.png"); }).detach();
  std::this_thread::sleep_for(std::chrono::microseconds(2000 + microseconds));
  std::raise(SIGINT);
}

TEST(AtomicFileDeathTest, SignalsLeaveNothingOfAnyThread) {
  const Scratch scratch;
  for (int i = 0; i < 20; ++i) {
    EXPECT_EXIT(startThreadsAndRaise(scratch, 37 * i), ExitedWithCode(130), "");
    EXPECT_EQ(scratch.names(), Names{});
  }
}

TEST(AtomicFile, LeavesNothingUnlessCommitted) {
  const Scratch scratch;
  {
    AtomicFile file(scratch / "out.png");
    std::fputs("half a picture", file.stream());
  }
  EXPECT_EQ(scratch.names(), Names{});
  {
    AtomicFile file(scratch / "out.png");
    std::fputs("a picture", file.stream());
    file.commit();
  }
  EXPECT_EQ(scratch.names(), Names{"out.png"});
  EXPECT_EQ(scratch.read("out.png"), "a picture");
}

void limitFileSize(rlim_t bytes) {
  const rlimit limit{bytes, RLIM_INFINITY};
  setrlimit(RLIMIT_FSIZE, &limit);
}

// A write fails temporarily and unnoticed; commit() must still report it.
void failEarly(const std::filesystem::path& path) {
  installSignalHandlers();
  AtomicFile file(path);
  limitFileSize(1000);
  for (int i = 0; i < 10000; ++i) std::fputs("a line that does not fit\n", file.stream());
  limitFileSize(RLIM_INFINITY);
  std::fputs("the last line\n", file.stream());
  if (std::fflush(file.stream()) != 0) _exit(1);  // now the stream accepts everything
  const Outcome outcome = attempt([&file] { file.commit(); });
  _exit(outcome.status == kInputOutput ? 0 : 2);
}

TEST(AtomicFileDeathTest, RemembersAnEarlierFailedWrite) {
  const Scratch scratch;
  scratch.write("out.png", "old");
  EXPECT_EXIT(failEarly(scratch / "out.png"), ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("out.png"), "old");
  EXPECT_EXIT(failEarly("png:-"), ExitedWithCode(0), "");
}

TEST(AtomicFile, ManyAtOnce) {
  const Scratch scratch;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread)
    threads.emplace_back([&scratch, thread] {
      for (int i = 0; i < 5; ++i) {
        const std::string name = std::to_string(thread) + "-" + std::to_string(i);
        AtomicFile file(scratch / name);
        file.write(name.data(), name.size());
        if (i != 3) file.commit();
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(scratch.names().size(), 8u * 4);
  for (const std::string& name : scratch.names()) EXPECT_EQ(scratch.read(name), name);
}

TEST(AtomicFile, RejectsMoreFilesThanItCanRemove) {
  const Scratch scratch;
  std::vector<std::unique_ptr<AtomicFile>> files;
  for (int i = 0; i < 256; ++i)
    files.push_back(std::make_unique<AtomicFile>(scratch / std::to_string(i)));
  EXPECT_THROW(AtomicFile(scratch / "last"), std::runtime_error);
  files.clear();
  EXPECT_EQ(scratch.names(), Names{});
}

}  // namespace
}  // namespace vistrel::app
