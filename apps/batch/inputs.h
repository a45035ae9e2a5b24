// Which files the inputs on a command line stand for.
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
  std::vector<std::string> remarks;            // on what of them is left out
};

bool isFolder(const std::filesystem::path& path);

// A folder stands for the frames in it, by name; without one, for itself.
Inputs findInputs(const std::vector<std::string>& named, const IsFrame& isFrame);

}  // namespace vistrel::app
