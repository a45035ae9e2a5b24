#include "apps/progress/progress_stats.h"

#include <fmt/format.h>

#include <cmath>
#include <nlohmann/json.hpp>

namespace vistrel::app {
namespace {

constexpr size_t kCells = 20;

// "0:07", "59:30", "27:46:40"
std::string clock(double duration) {
  const auto seconds = static_cast<uint64_t>(std::ceil(duration));
  const uint64_t hours = seconds / 3600, minutes = seconds / 60 % 60;
  if (hours) return fmt::format("{}:{:02}:{:02}", hours, minutes, seconds % 60);
  return fmt::format("{}:{:02}", minutes, seconds % 60);
}

double thousandths(double value) { return std::round(value * 1000) / 1000; }

}  // namespace

std::string barOf(const ProgressStats& s, size_t width) {
  const size_t filled = s.total ? kCells * s.done / s.total : 0;
  std::string cells, count = fmt::format("{}", s.done), frames, pixels, left;
  if (s.total) {
    cells = fmt::format("[{:#>{}}{:.>{}}] ", "", filled, "", kCells - filled);
    count += fmt::format("/{}", s.total);
  }
  if (s.made && s.seconds > 0) {
    frames = fmt::format("  {:.1f} frames/s", s.framesPerSecond());
    if (s.pixels) pixels = fmt::format("  {:.1f} Mpixel/s", s.megapixelsPerSecond());
    if (s.total) left = "  " + clock(s.remaining()) + " left";
  }
  for (std::string* part : {&pixels, &cells, &frames, &left})
    if (cells.size() + count.size() + frames.size() + pixels.size() + left.size() > width)
      part->clear();
  return cells + count + frames + pixels + left;
}

std::string summaryOf(const ProgressStats& s) {
  std::string text = fmt::format("{} made", s.made);
  if (s.upToDate()) text += fmt::format(", {} up to date", s.upToDate());
  text += fmt::format(", {} failed", s.failed);
  if (s.total > s.done) text += fmt::format(", {} left", s.total - s.done);
  text += fmt::format(" in {:.1f} s", s.seconds);
  if (s.made == 0 || s.seconds <= 0) return text;
  return text +
         fmt::format(": {:.1f} frames/s, {:.1f} MB/s", s.framesPerSecond(), s.megabytesPerSecond());
}

std::string jsonOf(const ProgressStats& s) {
  nlohmann::ordered_json json{{"done", s.done},
                              {"total", s.total},
                              {"seconds", thousandths(s.seconds)},
                              {"frames_per_second", thousandths(s.framesPerSecond())},
                              {"megapixels_per_second", thousandths(s.megapixelsPerSecond())},
                              {"remaining_seconds", nullptr}};
  if (s.total == 0) json["total"] = nullptr;
  if (s.remaining() >= 0 && s.seconds > 0) json["remaining_seconds"] = thousandths(s.remaining());
  return json.dump();
}

}  // namespace vistrel::app
