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

std::string barOf(const ProgressStats& s) {
  const size_t filled = s.total ? kCells * s.done / s.total : kCells;
  std::string bar =
      fmt::format("[{:#>{}}{:.>{}}] {}/{}", "", filled, "", kCells - filled, s.done, s.total);
  if (s.made == 0 || s.seconds <= 0) return bar;
  bar += fmt::format("  {:.1f} frames/s", s.framesPerSecond());
  if (s.pixels) bar += fmt::format("  {:.1f} Mpixel/s", s.megapixelsPerSecond());
  return bar + "  " + clock(s.remaining()) + " left";
}

std::string jsonOf(const ProgressStats& s) {
  nlohmann::ordered_json json{{"done", s.done},
                              {"total", s.total},
                              {"seconds", thousandths(s.seconds)},
                              {"frames_per_second", thousandths(s.framesPerSecond())},
                              {"megapixels_per_second", thousandths(s.megapixelsPerSecond())},
                              {"remaining_seconds", nullptr}};
  if (s.made && s.seconds > 0) json["remaining_seconds"] = thousandths(s.remaining());
  return json.dump();
}

}  // namespace vistrel::app
