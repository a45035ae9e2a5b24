#include "apps/batch/inputs.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <span>

#include "apps/files/stem.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

bool isHidden(const fs::path& path) { return path.filename().string()[0] == '.'; }

// Sorted, without hidden ones.
std::vector<fs::path> filesIn(const fs::path& folder, bool recursive) {
  std::vector<fs::path> files;
  std::error_code error;  // from a link to itself
  for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
    if (!recursive || isHidden(entry->path())) entry.disable_recursion_pending();
    if (entry->is_regular_file(error) && !isHidden(entry->path())) files.push_back(entry->path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// "a.png", "a.png and 3 more"
std::string listOf(std::span<const fs::path> files) {
  const std::string name = files[0].filename().string();
  return files.size() > 1 ? fmt::format("{} and {} more", name, files.size() - 1) : name;
}

// Those of which `belongs` is false.
template <class Predicate>
std::vector<fs::path> takeOut(std::vector<fs::path>& files, const Predicate& belongs) {
  const auto others = std::stable_partition(files.begin(), files.end(), belongs);
  const std::vector<fs::path> taken(others, files.end());
  files.erase(others, files.end());
  return taken;
}

fs::path withoutExtension(const fs::path& file) { return file.parent_path() / stemOf(file); }

// Of the files with each name, apart from the extension.
std::map<fs::path, size_t> countsOf(const std::vector<fs::path>& files) {
  std::map<fs::path, size_t> counts;
  for (const fs::path& file : files) ++counts[withoutExtension(file)];
  return counts;
}

void addFolder(const fs::path& folder, const IsFrame& isFrame, bool recursive, Inputs& inputs) {
  std::vector<fs::path> frames = filesIn(folder, recursive);
  const auto ignore = [&](const char* what, const std::vector<fs::path>& files) {
    if (files.empty()) return;
    inputs.warnings.push_back(
        fmt::format("{}: ignoring {}: {}", folder.string(), what, listOf(files)));
  };
  ignore("files without the extension of a frame", takeOut(frames, isFrame));
  ignore("pictures beside their frames",
         takeOut(frames, [counts = countsOf(frames)](const fs::path& file) {
           return counts.at(withoutExtension(file)) < 2 || !isOwnPicture(file);
         }));
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
