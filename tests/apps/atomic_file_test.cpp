// A file that is not finished, at the end of the program.
#include "apps/output/atomic_file.h"

#include <gtest/gtest.h>

#include <csignal>

#include "tests/apps/program.h"

namespace vistrel::app {
namespace {

using ::testing::ExitedWithCode;
using Names = std::vector<std::string>;

void startAndRaise(const Scratch& scratch, int signal) {
  installSignalHandlers();
  AtomicFile file(scratch / "out.png");
  std::fputs("half a picture", file.stream());
  std::fflush(file.stream());
  if (scratch.names().size() != 2) _exit(1);  // it does stand beside out.png meanwhile
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

}  // namespace
}  // namespace vistrel::app
