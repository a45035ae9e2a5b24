// Which input becomes which picture.
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

// One frame and its picture.
struct Job {
  std::filesystem::path from, to;
  std::optional<uint64_t> frame;      // if the input has several
  bool oneOfMany = false;             // the output's name is derived, not given
  Outcome outcome;                    // of opening the input
  std::vector<std::string> warnings;  // about an input that can't be opened
};

// Throws ProgramError if there is no such folder.
void checkIsFolder(const std::filesystem::path& path);

// The number of frames in an input. Throws ProgramError if it cannot be opened, and adds warnings.
using FramesOf =
    std::function<uint64_t(const std::filesystem::path&, std::vector<std::string>& warnings)>;

struct BatchRequest {
  std::vector<std::string> inputs;
  std::string output;     // a picture, or a folder for one per input; empty: beside each input
  std::string extension;  // of the pictures in a folder, for instance ".png"
  IsFrame isFrame;        // applied to the files in a folder
  FramesOf framesOf;
};

struct BatchPlan {
  std::vector<Job> jobs;
  std::vector<std::string> warnings;  // for the user
};

// A folder among the inputs stands for the frames in it. If an input has several frames, each gets
// a picture of its own: NAME_000000.png and so on. Adds all files to `files`. Throws ProgramError
// if a file would be written twice, if an input would be overwritten, or if the output folder does
// not exist.
BatchPlan planJobs(const BatchRequest& request, RunFiles& files);

}  // namespace vistrel::app
