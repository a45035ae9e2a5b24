#include "apps/batch/inputs.h"

#include <fmt/format.h>

#include <algorithm>

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

bool isHidden(const fs::path& path) { return path.filename().string()[0] == '.'; }

// Sorted, without hidden ones.
std::vector<fs::path> filesIn(const fs::path& folder, bool recursive) {
  std::vector<fs::path> files;
  std::error_code error;  // from a dangling link
  for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
    if (!recursive || isHidden(entry->path())) entry.disable_recursion_pending();
    if (entry->is_regular_file(error) && !isHidden(entry->path())) files.push_back(entry->path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

void addFolder(const fs::path& folder, const IsFrame& isFrame, bool recursive, Inputs& inputs) {
  std::vector<fs::path> frames = filesIn(folder, recursive);
  const auto others = std::stable_partition(frames.begin(), frames.end(), isFrame);
  if (const auto n = frames.end() - others; n > 0)
    inputs.warnings.push_back(
        fmt::format("{}: ignoring files without the extension of a frame: {}{}", folder.string(),
                    others->filename().string(), n > 1 ? fmt::format(" and {} more", n - 1) : ""));
  frames.erase(others, frames.end());
  for (const fs::path& frame : frames)
    inputs.files.push_back({frame, frame.lexically_relative(folder).parent_path()});
  if (frames.empty()) inputs.files.push_back({folder});
  inputs.folders.push_back(folder);
}

}  // namespace

bool isFolder(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

Inputs findInputs(const std::vector<std::string>& named, const IsFrame& isFrame, bool recursive) {
  Inputs inputs;
  for (const fs::path input : named) {
    if (isFolder(input))
      addFolder(input, isFrame, recursive, inputs);
    else
      inputs.files.push_back({input});
  }
  return inputs;
}

}  // namespace vistrel::app
