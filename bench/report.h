// Prints the results as a table and writes them as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "bench/compare.h"

namespace vistrel::core::bench {

class Report {
 public:
  Report(const std::string& filter, int rounds);
  // Of what has no peer.
  void beginSection(const std::string& section, const std::string& unit);
  void add(const std::string& name, const std::string& frame, const Timing& t);
  // ratio: its time to that of what it is compared with. limit: 0 if there is none.
  void addRelative(const std::string& name, const std::string& frame, const Timing& t, double ratio,
                   double limit);
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
