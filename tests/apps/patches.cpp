#include "tests/apps/patches.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace vistrel {
namespace {

bool parsePatch(const std::string& line, Patch& patch) {
  char cross = 0, plus = 0, otherPlus = 0;
  std::istringstream words(line);
  auto& [name, box, colour] = patch;
  words >> name >> box.width >> cross >> box.height >> plus >> box.x >> otherPlus >> box.y;
  if (!words || cross != 'x' || plus != '+' || otherPlus != '+') return false;
  if ((words >> std::ws).eof()) return true;
  return words >> colour[0] >> colour[1] >> colour[2] && (words >> std::ws).eof();
}

}  // namespace

std::vector<Patch> readPatches(const std::filesystem::path& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error(path.string() + " cannot be read");
  std::vector<Patch> patches;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    if (!parsePatch(line, patches.emplace_back()))
      throw std::runtime_error(path.string() + ": \"" + line +
                               "\" is not NAME WxH+X+Y [RED GREEN BLUE]");
  }
  return patches;
}

}  // namespace vistrel
