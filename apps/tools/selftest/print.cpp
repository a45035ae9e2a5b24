#include "apps/tools/selftest/print.h"

#include <fmt/format.h>

namespace vistrel::app::selftest {
namespace {

std::string levelsOf(const Summary& summary) {
  std::string levels;
  for (const std::string& level : summary.levels) levels += (levels.empty() ? "" : ", ") + level;
  return levels;
}

}  // namespace

void print(const Summary& v) {
  for (const Difference& d : v.differences)
    fmt::print("DIFFERS: {}, level {}: hash {:016x}, expected {:016x}\n", d.combination, d.level,
               d.got, d.expected);
  if (v.differences.empty())
    fmt::print("OK: {} combinations at each of {} levels: {}\n", v.combinations, v.levels.size(),
               levelsOf(v));
  else
    fmt::print("{} of {} results differ\n", v.differences.size(), v.combinations * v.levels.size());
}

}  // namespace vistrel::app::selftest
