// The bar, and progress as JSON.
#include <fcntl.h>
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
  ASSERT_EQ(objects.size(), 3u);
  EXPECT_EQ(objects[0].at("done"), 1);
  EXPECT_EQ(objects[0].at("total"), 2);
  EXPECT_EQ(objects[1].at("done"), 2);
  EXPECT_EQ(objects[2].at("message"), "bad.pgm: maxval 0: 1 to 65535 are allowed");
}

TEST_F(ProgressBar, AlwaysAndNeverShowABar) {
  EXPECT_NE(convert("a.pgm --progress always").err.find("[####################] 1/1"),
            std::string::npos);
  EXPECT_EQ(convert("a.pgm --overwrite --progress never").err, "");
}

// Here the program's standard error is a terminal.
TEST_F(ProgressBar, ShowABarOnATerminal) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0 || grantpt(terminal) || unlockpt(terminal)) GTEST_SKIP() << "no terminals";
  const std::string name = ptsname(terminal);
  const int keep = open(name.c_str(), O_RDWR | O_NOCTTY);
  const Finished result = scratch.vistrel("convert --phase mono -o out a.pgm b.pgm",
                                          [keep] { dup2(keep, STDERR_FILENO); });
  EXPECT_EQ(result.status, 0);
  close(keep);  // without a writer, reading ends
  std::string text;
  char part[256];
  for (ssize_t n; (n = read(terminal, part, sizeof part)) > 0;)
    text.append(part, static_cast<size_t>(n));
  EXPECT_NE(text.find("] 1/2"), std::string::npos) << text;
  EXPECT_NE(text.find("[####################] 2/2"), std::string::npos) << text;
  EXPECT_EQ(text.substr(text.rfind('\r')), "\r\x1b[K") << "the bar goes away at the end";
  close(terminal);
}

}  // namespace
}  // namespace vistrel
