#include "apps/progress/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>

namespace vistrel::app {
namespace {

using Json = nlohmann::ordered_json;

// Ignores errors: a closed standard error is no reason to stop.
void put(const std::string& text) { std::fputs(text.c_str(), stderr); }

}  // namespace

Progress::Progress(size_t total, ProgressMode mode)
    : bar_(mode == ProgressMode::kAlways ||
           (mode == ProgressMode::kAuto && total > 1 && isatty(STDERR_FILENO))),
      json_(mode == ProgressMode::kJson) {
  stats_.total = total;
  if (bar_) draw();
}

void Progress::made(uint64_t pixels) {
  ++stats_.made;
  stats_.pixels += pixels;
  passed();
}

void Progress::passed() {
  ++stats_.done;
  draw();
}

void Progress::say(std::string_view text) {
  if (json_) {
    const Json message{{"message", text}};
    put(message.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n");
    return;
  }
  clear();
  put(fmt::format("vistrel: {}\n", text));
  if (bar_) draw();
}

void Progress::draw() {
  stats_.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  if (bar_) put("\r\x1b[K" + barOf(stats_));
  if (json_) put(jsonOf(stats_) + "\n");
}

void Progress::clear() const {
  if (bar_) put("\r\x1b[K");
}

}  // namespace vistrel::app
