#include "apps/batch/jobs.h"

#include <sys/stat.h>

#include <algorithm>
#include <map>

#include "apps/output/picture.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

constexpr uint64_t kMostFrames = 1'000'000;  // six digits tell them apart

bool isFolder(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

// Sorted, without those whose names begin with a dot.
std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file() && entry.path().filename().string()[0] != '.')
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<fs::path> expand(const std::vector<std::string>& inputs) {
  std::vector<fs::path> files;
  for (const fs::path input : inputs) {
    const auto inside = isFolder(input) ? filesIn(input) : std::vector<fs::path>{};
    files.insert(files.end(), inside.begin(), inside.end());
    if (inside.empty()) files.push_back(input);  // which is refused then, if it is a folder
  }
  return files;
}

// The picture for an input in a folder, or the one that was named.
struct Target {
  fs::path path;
  std::string extension;
  bool folder;

  fs::path of(const fs::path& input) const {
    if (!folder) return path;
    return path / (input == "-" ? fs::path("stdin") : input.stem()).concat(extension);
  }
};

fs::path numbered(const fs::path& path, uint64_t frame) {
  const std::string name =
      fmt::format("{}_{:06}{}", path.stem().string(), frame, path.extension().string());
  return path.parent_path() / name;
}

void addJobs(const fs::path& input, const Target& target, const FramesOf& framesOf,
             std::vector<Job>& jobs) {
  Job job{input, target.of(input), {}, target.folder, {}};
  uint64_t frames = 1;
  job.refusal = attempt([&] {
    frames = framesOf(input);
    if (frames > kMostFrames)
      fail(kRejected, "it has {} frames: {} at most are allowed at once; --frame N takes one",
           frames, kMostFrames);
    if (frames > 1 && isStandardOutput(target.path))
      fail(kRejected, "it has {} frames: standard output takes one; --frame N names it", frames);
  });
  if (job.refusal.status != kDone || frames == 1) {
    jobs.push_back(job);
    return;
  }
  job.oneOfMany = true;
  const fs::path to = job.to;
  for (uint64_t frame = 0; frame < frames; ++frame) {
    job.frame = frame;
    job.to = numbered(to, frame);
    jobs.push_back(job);
  }
}

using FileId = std::pair<dev_t, ino_t>;

std::optional<FileId> idOf(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return {};
  return FileId{status.st_dev, status.st_ino};
}

void checkDistinct(const std::vector<fs::path>& inputs, const std::vector<Job>& jobs) {
  std::map<FileId, fs::path> ids;
  for (const fs::path& input : inputs)
    if (const auto id = idOf(input)) ids.emplace(*id, input);
  std::map<fs::path, fs::path> sources;
  for (const Job& job : jobs) {
    const auto id = idOf(job.to);
    if (const auto same = id ? ids.find(*id) : ids.end(); same != ids.end())
      fail(kUsage, "-o {}: it is the same file as the input {}", job.to.string(),
           same->second.string());
    const auto [other, first] = sources.emplace(job.to, job.from);
    if (!first)
      fail(kUsage, "-o {}: both {} and {} would be written there", job.to.string(),
           other->second.string(), job.from.string());
  }
}

}  // namespace

void checkIsFolder(const fs::path& path) {
  if (isFolder(path)) return;
  std::error_code error;
  if (fs::exists(path, error))
    fail(kUsage, "-o {}: a folder is expected, this is a file", path.string());
  fail(kInputOutput, "-o {}: there is no such folder", path.string());
}

void checkIsNoInput(std::string_view option, const std::vector<std::string>& inputs,
                    const fs::path& output) {
  for (const std::string& input : inputs) {
    std::error_code error;
    if (fs::equivalent(input, output, error))
      fail(kUsage, "{} {}: it is the same file as the input {}", option, output.string(), input);
  }
}

std::vector<Job> planJobs(const std::vector<std::string>& inputs, const std::string& output,
                          const std::string& extension, const FramesOf& framesOf) {
  Target target{output, extension, false};
  const std::vector<fs::path> files = expand(inputs);
  target.folder = files.size() > 1 || files[0] != inputs[0] || !target.path.has_filename() ||
                  isFolder(target.path);
  if (target.folder)
    checkIsFolder(target.path);
  else
    pictureType(target.path);
  std::vector<Job> jobs;
  for (const fs::path& file : files) addJobs(file, target, framesOf, jobs);
  checkDistinct(files, jobs);
  return jobs;
}

}  // namespace vistrel::app
