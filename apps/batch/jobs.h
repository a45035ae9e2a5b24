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

// The picture of one of several frames: rose_000003.png.
std::filesystem::path numbered(const std::filesystem::path& path, uint64_t frame);

// Throws ProgramError (usage) if that is something else than a folder.
void checkIsFolder(const std::filesystem::path& path);

// The number of frames in an input. Throws ProgramError if it cannot be opened, and adds warnings.
using FramesOf =
    std::function<uint64_t(const std::filesystem::path&, std::vector<std::string>& warnings)>;

struct BatchRequest {
  std::vector<std::string> inputs;
  // A picture or a film; or a folder, which need not exist, for a picture per input; empty: beside
  // each input
  std::string output;
  std::string extension;  // of the pictures in a folder, for instance ".png"
  IsFrame isFrame;        // applied to the files in a folder
  FramesOf framesOf;
  bool recursive = false;         // folders stand for the frames in their sub-folders too
  bool film = false;              // the output takes all pictures
  std::optional<uint64_t> frame;  // of a film: the only frame of each input
};

struct BatchPlan {
  std::vector<Job> jobs;
  std::vector<std::string> warnings;  // for the user
};

// A folder among the inputs stands for the frames in it, whose pictures keep their sub-folders. If
// an input has several frames, each gets a picture of its own: NAME_000000.png and so on; if two
// frames of a folder have the same name apart from the extension, m.pgm becomes m.pgm.png. A film
// has one job for each input. Adds all files to `files`. Throws ProgramError if a file would be
// written twice or if an input would be overwritten.
BatchPlan planJobs(const BatchRequest& request, RunFiles& files);

}  // namespace vistrel::app
