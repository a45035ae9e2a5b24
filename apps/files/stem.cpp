#include "apps/files/stem.h"

#include <algorithm>
#include <cctype>

namespace vistrel::app {

namespace fs = std::filesystem;

std::string extensionOf(const fs::path& path) {
  std::string extension = path.extension().string();
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

fs::path stemOf(const fs::path& path) {
  const std::string extension = extensionOf(path);
  const bool isCompressed = extension == ".gz" || extension == ".fz";
  return isCompressed ? path.stem().stem() : path.stem();
}

}  // namespace vistrel::app
