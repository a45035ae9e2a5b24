// The bar, and progress as JSON.
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/apps/batch/batch_test.h"

namespace vistrel {
namespace {

using nlohmann::json;

struct ProgressBar : BatchTest {};

TEST_F(ProgressBar, JsonProgress) {
  const Finished result = convert("a.pgm bad.pgm --progress json");
  std::istringstream lines(result.err);
  std::vector<json> objects;
  for (std::string line; std::getline(lines, line);) objects.push_back(json::parse(line));
  ASSERT_EQ(objects.size(), 4u);
  EXPECT_EQ(objects[0].at("done"), 1);
  EXPECT_EQ(objects[0].at("total"), 2);
  EXPECT_EQ(objects[1].at("done"), 2);
  EXPECT_EQ(objects[2].at("message"), "bad.pgm: maxval 0: 1 to 65535 are allowed");
  const std::string summary = objects[3].at("message");
  EXPECT_EQ(summary.rfind("1 made, 1 failed in ", 0), 0u) << summary;
}

TEST_F(ProgressBar, AlwaysAndNeverShowABar) {
  EXPECT_NE(convert("a.pgm --progress always").err.find("[####################] 1/1"),
            std::string::npos);
  EXPECT_EQ(convert("a.pgm --overwrite --progress never").err, "");
}

// What the program writes to a terminal of so many columns.
std::string onTerminal(const Scratch& scratch, unsigned short columns) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0 || grantpt(terminal) || unlockpt(terminal)) return "";
  const std::string name = ptsname(terminal);
  const int keep = open(name.c_str(), O_RDWR | O_NOCTTY);
  const winsize size{24, columns, 0, 0};
  ioctl(keep, TIOCSWINSZ, &size);
  const Finished result = scratch.vistrel("convert --phase mono -o out a.pgm b.pgm",
                                          [keep] { dup2(keep, STDERR_FILENO); });
  EXPECT_EQ(result.status, 0);
  close(keep);  // without a writer, reading ends
  std::string text;
  char part[256];
  for (ssize_t n; (n = read(terminal, part, sizeof part)) > 0;)
    text.append(part, static_cast<size_t>(n));
  close(terminal);
  return text;
}

TEST_F(ProgressBar, ShowABarOnATerminal) {
  const std::string text = onTerminal(scratch, 80);
  if (text.empty()) GTEST_SKIP() << "no terminals";
  EXPECT_NE(text.find("] 1/2"), std::string::npos) << text;
  EXPECT_NE(text.find("[####################] 2/2"), std::string::npos) << text;
  EXPECT_EQ(text.substr(text.rfind('\r')), "\r\x1b[K") << "the bar goes away at the end";
  EXPECT_NE(text.find("vistrel: 2 made, 0 failed in "), std::string::npos) << text;
}

TEST_F(ProgressBar, FitsTheTerminal) {
  const std::string text = onTerminal(scratch, 40);
  if (text.empty()) GTEST_SKIP() << "no terminals";
  std::istringstream bars(text);
  size_t longest = 0;
  for (std::string bar; std::getline(bars, bar, '\r');)
    if (bar.rfind("\x1b[K", 0) == 0 && bar.find("vistrel: ") == bar.npos)
      longest = std::max(longest, bar.size() - 3);
  EXPECT_GT(longest, 10u);
  EXPECT_LT(longest, 40u);
}

}  // namespace
}  // namespace vistrel
