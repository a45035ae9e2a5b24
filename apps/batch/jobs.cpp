#include "apps/batch/jobs.h"

#include <map>

#include "apps/failure.h"
#include "apps/output/picture.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

fs::path inFolder(const fs::path& folder, const fs::path& input) {
  return folder / input.stem().concat(".png");
}

void checkDistinct(const std::vector<Job>& jobs) {
  std::map<fs::path, fs::path> sources;
  for (const Job& job : jobs) {
    checkIsNoInput("-o", {job.from}, job.to);
    const auto [other, first] = sources.emplace(job.to, job.from);
    if (!first)
      fail(kUsage, "-o {}: both {} and {} would be written there", job.to.string(),
           other->second.string(), job.from.string());
  }
}

}  // namespace

void checkIsFolder(const fs::path& path) {
  std::error_code error;
  if (fs::is_directory(path, error)) return;
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

std::vector<Job> planJobs(const std::vector<std::string>& inputs, const std::string& output) {
  const fs::path to = output;
  std::vector<Job> jobs;
  if (inputs.size() > 1 || !to.has_filename() || fs::is_directory(to)) {
    checkIsFolder(to);
    for (const fs::path from : inputs) jobs.push_back({from, inFolder(to, from)});
  } else {
    pictureType(to);
    jobs.push_back({inputs[0], to});
  }
  checkDistinct(jobs);
  return jobs;
}

}  // namespace vistrel::app
