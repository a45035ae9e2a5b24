#include "apps/batch/inputs.h"

#include <fmt/format.h>

#include <algorithm>

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

// Sorted, without hidden files.
std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;  // from a dangling link
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file(error) && entry.path().filename().string()[0] != '.')
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

void addFolder(const fs::path& folder, const IsFrame& isFrame, Inputs& inputs) {
  std::vector<fs::path> frames = filesIn(folder);
  const auto others = std::stable_partition(frames.begin(), frames.end(), isFrame);
  if (const auto n = frames.end() - others; n > 0)
    inputs.warnings.push_back(
        fmt::format("{}: ignoring files without the extension of a frame: {}{}", folder.string(),
                    others->filename().string(), n > 1 ? fmt::format(" and {} more", n - 1) : ""));
  frames.erase(others, frames.end());
  inputs.files.insert(inputs.files.end(), frames.begin(), frames.end());
  if (frames.empty()) inputs.files.push_back(folder);
  inputs.folders.push_back(folder);
}

}  // namespace

bool isFolder(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

Inputs findInputs(const std::vector<std::string>& named, const IsFrame& isFrame) {
  Inputs inputs;
  for (const fs::path input : named) {
    if (isFolder(input))
      addFolder(input, isFrame, inputs);
    else
      inputs.files.push_back(input);
  }
  return inputs;
}

}  // namespace vistrel::app
