// Real frames, where they are at hand.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace vistrel {

// The files in a folder of the test data, sorted; none where there is no such folder.
inline std::vector<std::filesystem::path> framesIn(const std::string& folder) {
  const char* data = std::getenv("VISTREL_DATA");
  const std::filesystem::path path = std::filesystem::path(data ? data : VISTREL_DATA) / folder;
  std::vector<std::filesystem::path> frames;
  if (std::filesystem::is_directory(path))
    for (const auto& entry : std::filesystem::directory_iterator(path))
      frames.push_back(entry.path());
  std::sort(frames.begin(), frames.end());
  return frames;
}

}  // namespace vistrel
