// Prints the results as a table and writes them as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "bench/compare.h"

namespace vistrel::core::bench {

class Report {
 public:
  Report(const std::string& filter, int rounds);
  // Of loops without a peer: the floor, or the samples at a level.
  void beginLoops(const std::string& section);
  void add(const std::string& loop, const FrameSize& size, const Timing& nsPerPixel);
  void beginLevel(Level level);
  void add(const Result& result);
  void end();
  void write(const std::string& jsonFile) const;

 private:
  nlohmann::ordered_json json_;
  std::string section_;
  int met_ = 0, acceptable_ = 0, missed_ = 0;
};

}  // namespace vistrel::core::bench
