// The files that the inputs on a command line stand for.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vistrel::app {

using IsFrame = std::function<bool(const std::filesystem::path&)>;

struct InputFile {
  std::filesystem::path path;
  std::filesystem::path folder = {};  // in the input folder that has it in a sub-folder
};

struct Inputs {
  std::vector<InputFile> files;
  std::vector<std::filesystem::path> folders;  // among the inputs
  std::vector<std::string> warnings;           // about files that are left out
};

bool isFolder(const std::filesystem::path& path);

// A folder stands for the frames in it, sorted by name, and in its sub-folders if `recursive`; a
// folder without frames for itself. Hidden files and folders are left out.
Inputs findInputs(const std::vector<std::string>& named, const IsFrame& isFrame, bool recursive);

}  // namespace vistrel::app
