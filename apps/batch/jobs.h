// Which input becomes which output.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

struct Job {
  std::filesystem::path from, to;
};

// Throws Failure for what is no folder that is there.
void checkIsFolder(const std::filesystem::path& path);

// Throws Failure where the option's output would be written over one of the inputs.
void checkIsNoInput(std::string_view option, const std::vector<std::string>& inputs,
                    const std::filesystem::path& output);

// `output` is a picture, or a folder that gets a PNG for each input. Throws Failure for what
// would write a file twice, or over an input, or into a folder that there is not.
std::vector<Job> planJobs(const std::vector<std::string>& inputs, const std::string& output);

}  // namespace vistrel::app
