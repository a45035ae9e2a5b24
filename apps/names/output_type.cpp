#include "apps/names/output_type.h"

#include <algorithm>
#include <cctype>

namespace vistrel::app {

std::string outputTypeName(const std::filesystem::path& output) {
  std::string name = output.string();
  if (name.ends_with(":-")) {
    name.resize(name.size() - 2);
  } else {
    name = output.extension().string();
    name.erase(0, 1);
  }
  std::ranges::transform(name, name.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return name;
}

const std::vector<std::string>& folderTypes() {
  static const std::vector<std::string> types{"png", "jpg", "jpeg", "tiff", "tif", "pam",
                                              "ppm", "pgm", "pnm",  "npy",  "raw", "dng"};
  return types;
}

}  // namespace vistrel::app
