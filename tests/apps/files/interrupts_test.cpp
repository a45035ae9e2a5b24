// What interrupts say; tests/apps/files/atomic_file_test.cpp has what they leave.
#include "apps/files/interrupts.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

namespace vistrel::app {
namespace {

using ::testing::ExitedWithCode;

void sayAndRaise(const std::vector<std::string>& texts, int signal) {
  installSignalHandlers();
  for (const std::string& text : texts) setInterruptedText(text);
  std::raise(signal);
}

TEST(InterruptsDeathTest, SayTheLastText) {
  EXPECT_EXIT(sayAndRaise({}, SIGINT), ExitedWithCode(130), "^vistrel: interrupted\n$");
  EXPECT_EXIT(sayAndRaise({"1 made, 8 left", "2 made", "3 made"}, SIGTERM), ExitedWithCode(143),
              "^vistrel: interrupted: 3 made\n$");
}

TEST(InterruptsDeathTest, CutLongTexts) {
  EXPECT_EXIT(sayAndRaise({std::string(5000, 'x')}, SIGHUP), ExitedWithCode(129),
              "^vistrel: interrupted: x{200}\n$");
}

}  // namespace
}  // namespace vistrel::app
