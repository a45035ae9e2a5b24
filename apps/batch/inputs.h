// The files that the inputs on a command line stand for.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vistrel::app {

using IsFrame = std::function<bool(const std::filesystem::path&)>;

struct Inputs {
  std::vector<std::filesystem::path> files;
  std::vector<std::filesystem::path> folders;  // among the inputs
  std::vector<std::string> warnings;           // about files that are left out
};

bool isFolder(const std::filesystem::path& path);

// A folder stands for the frames in it, sorted by name; a folder without frames for itself.
Inputs findInputs(const std::vector<std::string>& named, const IsFrame& isFrame);

}  // namespace vistrel::app
