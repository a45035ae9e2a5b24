// Which input becomes which output.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vistrel::app {

struct Job {
  std::filesystem::path from, to;
};

// `output` is a picture, or a folder that gets a PNG for each input. Throws Failure for what
// would write a file twice, or over an input, or into a folder that there is not.
std::vector<Job> planJobs(const std::vector<std::string>& inputs, const std::string& output);

}  // namespace vistrel::app
