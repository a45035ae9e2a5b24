#include "tests/apps/tools/scene/chart.h"

#include <fstream>
#include <sstream>

namespace vistrel {

std::vector<Patch> readChart() {
  std::vector<Patch> patches;
  std::ifstream file(VISTREL_CHART);
  for (std::string line; std::getline(file, line);) {
    std::istringstream in(line);
    Patch p;
    if (line.starts_with('#')) continue;
    if (in >> p.name >> p.left >> p.top >> p.width >> p.height >> p.colour[0] >> p.colour[1] >>
        p.colour[2])
      patches.push_back(p);
  }
  return patches;
}

}  // namespace vistrel
