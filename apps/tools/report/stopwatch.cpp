#include "apps/tools/report/stopwatch.h"

#include <algorithm>
#include <chrono>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

class Run {
 public:
  Run(const vistrel_frame& frame, const AlgorithmChoice& algorithm)
      : frame_(frame), conversion_(defaultConversion(frame)) {
    conversion_.algorithm = algorithm.row->code;
    conversion_.threshold = algorithm.threshold;
    if (frame.bits > algorithm.row->max_bits) conversion_.truncate_to = algorithm.row->max_bits;
    convertInto(frame_, conversion_, image_);  // so that its memory is mapped
  }

  // Nanoseconds per pixel.
  double time() {
    const auto begin = std::chrono::steady_clock::now();
    convertInto(frame_, conversion_, image_);
    const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - begin;
    return taken.count() / (double{1} * frame_.width * frame_.height);
  }

 private:
  vistrel_frame frame_;
  vistrel_conversion conversion_;
  Image image_;
};

double medianOf(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

}  // namespace

std::vector<Timing> timeAll(const vistrel_frame& frame,
                            const std::vector<AlgorithmChoice>& algorithms, int rounds) {
  std::vector<Timing> timings;
  std::vector<std::vector<double>> times;
  const size_t before = vistrel_level();
  for (int round = 0; round < rounds; ++round) {
    size_t row = 0;
    for (size_t level = 0; const char* name = vistrel_level_name(level); ++level) {
      setLevel(level);
      for (const AlgorithmChoice& algorithm : algorithms) {
        if (round == 0) {
          timings.push_back({algorithm, name, std::min(frame.bits, algorithm.row->max_bits)});
          times.emplace_back();
        }
        times[row++].push_back(Run(frame, algorithm).time());
      }
    }
  }
  setLevel(before);
  for (size_t i = 0; i < timings.size(); ++i) {
    timings[i].nsPerPixel = *std::min_element(times[i].begin(), times[i].end());
    timings[i].medianNsPerPixel = medianOf(times[i]);
  }
  return timings;
}

}  // namespace vistrel::app
