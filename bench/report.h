// Prints the results as a table and writes them as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "bench/compare.h"

namespace vistrel::core::bench {

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
  nlohmann::ordered_json json_;
  int met_ = 0, acceptable_ = 0, missed_ = 0;
};

}  // namespace vistrel::core::bench
