#include "apps/batch/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace vistrel::app {
namespace {

constexpr size_t kCells = 40;

// A standard error that is closed is no reason to stop.
void put(const std::string& text) { std::fputs(text.c_str(), stderr); }

}  // namespace

Progress::Progress(size_t total) : total_(total), visible_(total > 1 && isatty(STDERR_FILENO)) {
  draw();
}

void Progress::step() {
  ++done_;
  draw();
}

void Progress::say(std::string_view text) {
  clear();
  put(fmt::format("vistrel: {}\n", text));
  draw();
}

void Progress::draw() const {
  if (!visible_) return;
  const size_t filled = kCells * done_ / total_;
  put(fmt::format("\r[{:#>{}}{:.>{}}] {}/{}", "", filled, "", kCells - filled, done_, total_));
}

void Progress::clear() const {
  if (visible_) put("\r\x1b[K");
}

}  // namespace vistrel::app
