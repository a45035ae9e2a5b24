#include "apps/batch/jobs.h"

#include <algorithm>

#include "apps/files/stem.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

constexpr uint64_t kMaxFrames = 1'000'000;  // six digits number them

// The output: a single picture, or a folder with a picture for each input.
struct Target {
  fs::path path;
  std::string extension;
  bool folder;
  bool many;  // several inputs, or a folder for their pictures

  fs::path of(const fs::path& input) const {
    if (!folder) return path;
    return (path.empty() ? input.parent_path() : path) /
           (input == "-" ? fs::path("stdin") : stemOf(input)).concat(extension);
  }
};

fs::path numbered(const fs::path& path, uint64_t frame) {
  const std::string name =
      fmt::format("{}_{:06}{}", path.stem().string(), frame, path.extension().string());
  return path.parent_path() / name;
}

void addJobs(const fs::path& input, const Target& target, const FramesOf& framesOf,
             std::vector<Job>& jobs) {
  Job job{input, target.of(input), {}, target.many, {}, {}};
  uint64_t frames = 1;
  job.outcome = attempt([&] {
    if (isFolder(input)) throwError(kRejected, "there is no frame in this folder");
    frames = framesOf(input, job.warnings);
    if (frames > kMaxFrames)
      throwError(kRejected,
                 "it has {} frames: at most {} are allowed at once; --frame N selects one", frames,
                 kMaxFrames);
    if (frames > 1 && isStandardOutput(target.path))
      throwError(kRejected, "it has {} frames: standard output takes one; --frame N selects it",
                 frames);
  });
  if (job.outcome.status != kDone || frames == 1) {
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

// The next run must not take pictures for frames.
void checkIsNoInput(const fs::path& folder, const fs::path& input, const std::string& extension) {
  std::error_code error;
  if (fs::equivalent(folder, input, error))
    throwError(
        kUsage,
        "-o {}: it is the input folder {}, where the next run would take {} pictures for frames; "
        "choose another folder, or name the frames one by one",
        folder.string(), input.string(), extension);
}

// Pictures lie beside their frames.
void checkBeside(const Inputs& inputs, const Target& target, const IsFrame& isFrame) {
  if (std::ranges::find(inputs.files, "-") != inputs.files.end())
    throwError(kUsage, "-o is missing: standard input has no folder for its picture");
  if (!isFrame("x" + target.extension)) return;
  if (!inputs.folders.empty())
    throwError(kUsage,
               "-o is missing: in the input folder {}, the next run would take {} pictures for "
               "frames",
               inputs.folders.front().string(), target.extension);
}

void checkTarget(const Target& target, const Inputs& inputs, const IsFrame& isFrame) {
  if (target.path.empty()) return checkBeside(inputs, target, isFrame);
  if (!target.folder) return void(pictureType(target.path));
  if (isStandardOutput(target.path))
    throwError(
        kUsage,
        "-o {}: it takes a single picture; several inputs, or a folder of inputs, need a folder",
        target.path.string());
  std::error_code error;
  if (inputs.files.size() > 1 && target.path.has_filename() && !fs::exists(target.path, error))
    throwError(kInputOutput, "-o {}: there is no such folder, and several inputs need one",
               target.path.string());
  checkIsFolder(target.path);
  if (!isFrame("x" + target.extension)) return;
  for (const fs::path& folder : inputs.folders)
    checkIsNoInput(target.path, folder, target.extension);
}

}  // namespace

void checkIsFolder(const fs::path& path) {
  if (isFolder(path)) return;
  std::error_code error;
  if (fs::exists(path, error))
    throwError(kUsage, "-o {}: a folder is expected; this is a file", path.string());
  throwError(kInputOutput, "-o {}: there is no such folder", path.string());
}

BatchPlan planJobs(const BatchRequest& a, RunFiles& files) {
  Inputs inputs = findInputs(a.inputs, a.isFrame);
  Target target{a.output, a.extension, false, false};
  target.folder = inputs.files.size() > 1 || inputs.files[0] != a.inputs[0] ||
                  target.path.empty() || !target.path.has_filename() || isFolder(target.path);
  // The picture beside a single frame is as good as named.
  target.many = target.folder && !(target.path.empty() && inputs.files.size() == 1);
  checkTarget(target, inputs, a.isFrame);
  BatchPlan plan{{}, std::move(inputs.warnings)};
  for (const fs::path& file : inputs.files) addJobs(file, target, a.framesOf, plan.jobs);
  for (const fs::path& file : inputs.files) files.addInput(file);
  for (const Job& job : plan.jobs) files.addWritten("-o", job.to, job.from.string());
  return plan;
}

}  // namespace vistrel::app
