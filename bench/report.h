// The results as a table on the screen and as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "bench/compare.h"

namespace vistrel::bench {

class Report {
 public:
  Report(const std::string& filter, int rounds);
  void beginFloor();
  void add(const std::string& floor, const FrameSize& size, const Timing& nsPerPixel);
  void beginLevel(Level level);
  void add(const Result& result);
  void end();
  void write(const std::string& jsonFile) const;

 private:
  nlohmann::ordered_json m_json;
  int m_met = 0, m_leastOnly = 0, m_missed = 0;
};

}  // namespace vistrel::bench
