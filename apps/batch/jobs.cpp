#include "apps/batch/jobs.h"

#include <algorithm>
#include <map>
#include <set>

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

  fs::path of(const InputFile& input, bool keepsExtension = false) const {
    if (!folder) return path;
    fs::path name = keepsExtension ? input.path.filename() : stemOf(input.path);
    if (input.path == "-") name = "stdin";
    return (path.empty() ? input.path.parent_path() : path / input.folder) / name.concat(extension);
  }
};

// The pictures of the inputs, before frames are numbered. Where two would have the same name, all
// inputs of that name keep their extensions, if that helps.
std::vector<fs::path> picturesOf(const std::vector<InputFile>& inputs, const Target& target) {
  std::map<fs::path, std::set<fs::path>> names;  // of the inputs that have this picture
  std::map<fs::path, size_t> counts;
  for (const InputFile& input : inputs) {
    names[target.of(input)].insert(input.path.filename());
    ++counts[target.of(input)];
  }
  std::vector<fs::path> pictures;
  for (const InputFile& input : inputs) {
    const fs::path picture = target.of(input);
    const size_t count = counts[picture];
    pictures.push_back(target.of(input, count > 1 && names[picture].size() == count));
  }
  return pictures;
}

// A name for a folder in place of a picture.
fs::path folderLike(const fs::path& picture) {
  return isStandardOutput(picture) ? "pictures" : fs::path(picture).replace_extension();
}

void checkIsFrame(const fs::path& input) {
  if (isFolder(input)) throwError(kRejected, "there is no frame in this folder");
}

void addJobs(const fs::path& input, const fs::path& picture, const Target& target,
             const FramesOf& framesOf, std::vector<Job>& jobs) {
  Job job{input, picture, {}, target.many, {}, {}};
  uint64_t frames = 1;
  job.outcome = attempt([&] {
    checkIsFrame(input);
    frames = framesOf(input, job.warnings);
    if (frames > kMaxFrames)
      throwError(kRejected,
                 "it has {} frames: at most {} are allowed at once; --frame N selects one", frames,
                 kMaxFrames);
    if (frames > 1 && isStandardOutput(target.path))
      throwError(kRejected,
                 "it has {} frames: -o {} takes one; --frame N selects it; raw:-, y4m:- and a "
                 "folder, such as -o {}/, take all",
                 frames, target.path.string(), folderLike(target.path).string());
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

bool isWithin(const fs::path& folder, const fs::path& outer) {
  std::error_code error;
  const std::string inner = fs::weakly_canonical(folder, error) / "";
  return inner.starts_with((fs::weakly_canonical(outer, error) / "").string());
}

// The next run must not take pictures for frames.
void checkIsNoInput(const fs::path& folder, const fs::path& input, const std::string& extension,
                    bool recursive) {
  std::error_code error;
  if (fs::equivalent(folder, input, error) || (recursive && isWithin(folder, input)))
    throwError(
        kUsage,
        "-o {}: it is the input folder {}, where the next run would take {} pictures for frames; "
        "choose another folder, or name the frames one by one",
        folder.string(), input.string(), extension);
}

// Pictures lie beside their frames.
void checkBeside(const Inputs& inputs, const Target& target, const IsFrame& isFrame) {
  if (std::ranges::count(inputs.files, fs::path("-"), &InputFile::path))
    throwError(kUsage, "-o is missing: standard input has no folder for its picture");
  if (!isFrame("x" + target.extension)) return;
  if (!inputs.folders.empty())
    throwError(kUsage,
               "-o is missing: in the input folder {}, the next run would take {} pictures for "
               "frames",
               inputs.folders.front().string(), target.extension);
}

bool isPictureName(const fs::path& path) {
  return attempt([&] { outputType(path); }).status == kDone;
}

// y4m:film is neither y4m:- nor film.y4m.
void checkPrefix(const std::string& name) {
  const size_t colon = name.find(':');
  if (colon != name.npos && isPictureName("x." + name.substr(0, colon)))
    throwError(kUsage, "-o {}: {}:- is standard output; the name of a file would be {}.{}", name,
               name.substr(0, colon), name.substr(colon + 1), name.substr(0, colon));
}

// A name without an extension is meant to be a folder's.
void checkIsPicture(const fs::path& path) {
  std::error_code error;
  if (!path.has_extension() && !isStandardOutput(path) && !fs::exists(path, error)) {
    checkPrefix(path.string());
    throwError(kUsage, "-o {0}: there is no such folder; {0}/ makes one, {0}.png a picture",
               path.string());
  }
  pictureType(path);
}

void checkTarget(const Target& target, const Inputs& inputs, const BatchRequest& request) {
  if (target.path.empty()) return checkBeside(inputs, target, request.isFrame);
  if (!target.folder) return checkIsPicture(target.path);
  std::error_code error;
  if (isStandardOutput(target.path) ||
      (target.path.has_filename() && !isFolder(target.path) && isPictureName(target.path)))
    throwError(kUsage,
               "-o {}: it takes a single picture; several inputs, or a folder of inputs, need a "
               "folder, such as -o {}/",
               target.path.string(), folderLike(target.path).string());
  checkIsFolder(target.path);
  if (!request.isFrame("x" + target.extension)) return;
  for (const fs::path& folder : inputs.folders)
    checkIsNoInput(target.path, folder, target.extension, request.recursive);
}

BatchPlan planFilm(const BatchRequest& a, const Inputs& inputs, RunFiles& files) {
  if (isFolder(a.output))
    throwError(kUsage, "-o {0}: a film is a file, and this is a folder; {0}/ takes pictures",
               a.output);
  BatchPlan plan{{}, inputs.warnings};
  for (const InputFile& file : inputs.files) {
    files.addInput(file.path);
    plan.jobs.push_back(
        {file.path, a.output, a.frame, false, attempt([&] { checkIsFrame(file.path); }), {}});
  }
  files.addWritten("-o", a.output);
  return plan;
}

}  // namespace

fs::path numbered(const fs::path& path, uint64_t frame) {
  const std::string name =
      fmt::format("{}_{:06}{}", path.stem().string(), frame, path.extension().string());
  return path.parent_path() / name;
}

void checkIsFolder(const fs::path& path) {
  std::error_code error;
  if (fs::exists(path, error) && !isFolder(path))
    throwError(kUsage, "-o {}: a folder is expected; this is a file", path.string());
}

BatchPlan planJobs(const BatchRequest& a, RunFiles& files) {
  const Inputs inputs = findInputs(a.inputs, a.isFrame, a.recursive);
  if (a.film) return planFilm(a, inputs, files);
  Target target{a.output, a.extension, false, false};
  const bool isEmpty = isFolder(inputs.files[0].path);  // a folder without frames
  target.folder = inputs.files.size() > 1 || inputs.files[0].path != a.inputs[0] ||
                  target.path.empty() || !target.path.has_filename() || isFolder(target.path) ||
                  (isEmpty && !isPictureName(target.path));
  // The picture beside a single frame is as good as named.
  target.many = target.folder && !(target.path.empty() && inputs.files.size() == 1);
  checkTarget(target, inputs, a);
  BatchPlan plan{{}, inputs.warnings};
  const std::vector<fs::path> pictures = picturesOf(inputs.files, target);
  for (size_t i = 0; i < pictures.size(); ++i)
    addJobs(inputs.files[i].path, pictures[i], target, a.framesOf, plan.jobs);
  for (const InputFile& file : inputs.files) files.addInput(file.path);
  for (const Job& job : plan.jobs) files.addWritten("-o", job.to, job.from.string());
  return plan;
}

}  // namespace vistrel::app
