// Films: pictures one after the other in one output, standard output or a Y4M.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "apps/batch/batch.h"
#include "apps/files/atomic_file.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {

// Whether an output of that name holds several pictures. Throws ProgramError (usage) if it is
// standard output of an unknown type.
bool isFilm(const std::filesystem::path& output);

// Where the pictures go: each at once to standard output, or all to a file that appears when the
// last one is complete.
class FilmOutput {
 public:
  FilmOutput(const std::filesystem::path& path, const FrameRate& rate);

  // Throws ProgramError (rejected) if such an image can't follow the first one.
  void check(const Image& image) const;
  // Throws ProgramError (input/output).
  void add(const Image& image, const PictureDetails& details);
  void finish();

 private:
  AtomicFile& file();

  std::filesystem::path path_;
  const PictureType& type_;
  FrameRate rate_;
  std::optional<AtomicFile> file_;
  std::optional<vistrel_layout> first_;
};

// Makes the pictures of all frames of all inputs, in order. The plan has one job for each input; if
// that has a frame, only this one.
class Film {
 public:
  Film(BatchPlan plan, const BatchOptions& options, BatchTask task, const FrameRate& rate);

  // After a failure, goes on with the next frame only if the options say so. Throws ProgramError
  // (input/output) if the output can't be written.
  ExitStatus run();

 private:
  bool runInput(const Job& job);
  bool runFrames(const Job& job, OpenJob& open, Preview& preview);
  bool runFrame(const Job& job, OpenJob& open, uint64_t n, Preview& preview);
  void add(const std::string& name, const Image& image, const PictureDetails& details);
  void note(const Job& job, Preview& preview);
  bool failed(const std::string& name, const Outcome& outcome);

  BatchPlan plan_;
  BatchOptions options_;
  BatchTask task_;
  Progress progress_;
  Worker worker_;
  FilmOutput output_;
  ExitStatusSum sum_;
  std::string printed_;  // the last command
};

}  // namespace vistrel::app
