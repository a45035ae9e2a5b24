// Which input becomes which output.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/failure.h"

namespace vistrel::app {

// One frame and the picture that it becomes.
struct Job {
  std::filesystem::path from, to;
  std::optional<uint64_t> frame;  // of several
  bool oneOfMany = false;         // the output's name was made here, not given
  Outcome refusal;                // of an input that cannot even be opened
};

// Throws Failure for what is no folder that is there.
void checkIsFolder(const std::filesystem::path& path);

// Throws Failure where the option's output would be written over one of the inputs.
void checkIsNoInput(std::string_view option, const std::vector<std::string>& inputs,
                    const std::filesystem::path& output);

// How many frames an input has; throws Failure for one that cannot be opened.
using FramesOf = std::function<uint64_t(const std::filesystem::path&)>;

// `output` is a picture, or a folder that gets a picture of this extension (".png") for each input.
// A folder among the inputs stands for the files in it. Each of several frames of an input gets a
// picture, NAME_000000.png and so on. Throws Failure for what would write a file twice, or over an
// input, or into a folder that there is not.
std::vector<Job> planJobs(const std::vector<std::string>& inputs, const std::string& output,
                          const std::string& extension, const FramesOf& framesOf);

}  // namespace vistrel::app
