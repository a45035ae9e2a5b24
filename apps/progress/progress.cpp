#include "apps/progress/progress.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>

namespace vistrel::app {
namespace {

using Json = nlohmann::ordered_json;

// Ignores errors: a closed standard error is no reason to stop.
void put(const std::string& text) { std::fputs(text.c_str(), stderr); }

// Of the terminal, without the last one: a bar that fills it would wrap.
size_t columns() {
  winsize size{};
  const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
  return isKnown ? size.ws_col - 1u : 79;
}

// More are not remembered: each frame that arrives may have one of its own.
constexpr size_t kNotes = 1000;

}  // namespace

Progress::Progress(size_t total, const BatchOptions& o)
    : quiet_(o.quiet),
      bar_(o.progress == ProgressMode::kAlways ||
           (o.progress == ProgressMode::kAuto && !quiet_ && total != 1 && isatty(STDERR_FILENO))),
      json_(o.progress == ProgressMode::kJson) {
  stats_.total = total;
  if (bar_) draw();
}

void Progress::made(uint64_t pixels, uint64_t bytes) {
  ++stats_.made;
  stats_.pixels += pixels;
  stats_.bytes += bytes;
  passed();
}

void Progress::failed() {
  ++stats_.failed;
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

void Progress::note(const std::string& input, const std::string& text) {
  if (quiet_) return;
  const auto known = notes_.find(text);
  if (known != notes_.end()) return void(known->second.insert(input));
  if (notes_.size() < kNotes) notes_[text].insert(input);
  say(input.empty() ? text : fmt::format("{}: {}", input, text));
}

void Progress::finish(bool sumsUp) {
  for (const auto& [text, inputs] : notes_)
    if (inputs.size() > 1) say(fmt::format("{} more: {}", inputs.size() - 1, text));
  notes_.clear();
  count();
  if (sumsUp && !quiet_) say(summaryOf(stats_));
  clear();
  bar_ = false;
}

void Progress::count() {
  stats_.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void Progress::draw() {
  count();
  if (bar_) put("\r\x1b[K" + barOf(stats_, columns()));
  if (json_) put(jsonOf(stats_) + "\n");
}

void Progress::clear() const {
  if (bar_) put("\r\x1b[K");
}

}  // namespace vistrel::app
