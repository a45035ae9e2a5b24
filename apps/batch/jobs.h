// Which input becomes which output.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "apps/batch/inputs.h"
#include "apps/error.h"
#include "apps/files/run_files.h"

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

// How many frames an input has; throws Failure for one that cannot be opened.
using FramesOf = std::function<uint64_t(const std::filesystem::path&)>;

struct Assignment {
  std::vector<std::string> inputs;
  std::string output;     // a picture, or a folder that gets one for each input,
  std::string extension;  // of this kind (".png")
  IsFrame isFrame;        // of the files in a folder
  FramesOf framesOf;
};

struct Plan {
  std::vector<Job> jobs;
  std::vector<std::string> remarks;  // to the user
};

// A folder among the inputs stands for the frames in it. Each of several frames of an input gets a
// picture, NAME_000000.png and so on. Tells `files` of all of them, which throws Failure for what
// would write a file twice, or over an input; throws Failure for a folder that there is not.
Plan planJobs(const Assignment& assignment, RunFiles& files);

}  // namespace vistrel::app
