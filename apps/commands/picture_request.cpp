#include "apps/commands/picture_request.h"

#include <chrono>

#include "apps/error.h"
#include "apps/input/frame_file.h"
#include "apps/input/frame_names.h"
#include "apps/options/help.h"
#include "apps/options/options.h"

namespace vistrel::app {

BatchPlan PictureRequest::plan(RunFiles& files) const {
  const FramesOf framesOf = [this](const std::filesystem::path& path, auto& warnings) {
    return input.frame ? 1 : FrameFile(path, input, warnings).frames();
  };
  const IsFrame isFrame = input.size ? isHeaderlessName : isFrameName;
  const std::string extension = "." + (type.empty() ? "png" : type);
  BatchPlan plan = planJobs({inputs, output, extension, isFrame, framesOf}, files);
  if (isStandardOutput(batch.manifest))
    throwError(kUsage, "--manifest {}: a file name is expected", batch.manifest);
  if (!batch.manifest.empty()) files.addWritten("--manifest", batch.manifest);
  return plan;
}

std::vector<std::string> PictureRequest::conflicts(const std::filesystem::path& first) const {
  std::vector<std::string> found;
  const auto addConflict = [&](const std::string& option, const char* why) {
    found.push_back(fmt::format("{} and -o {} cannot be combined: {}", option, output, why));
  };
  if (!type.empty() && !isSameType(pictureType("x." + type), pictureType(first)))
    addConflict("--type " + type,
                "a picture's name sets its type, --type that of pictures in a folder");
  const PictureType& kind = pictureType(first);
  if (isDng(kind) && !mosaic)
    addConflict("demosaicing", "a .dng holds a raw frame; --mosaic writes one");
  if (mosaic) frameType(first);
  for (const std::string& option : compression.unusedFor(kind.extension))
    addConflict(option, "that type is not compressed so");
  const char* const report = "standard output is for the picture alone";
  if (isStandardOutput(output) && batch.json) addConflict("--json", report);
  if (isStandardOutput(output) && !batch.manifest.empty())
    addConflict("--manifest " + batch.manifest, report);
  return found;
}

ExitStatus PictureRequest::run(BatchPlan plan, BatchTask task) const {
  const auto start = std::chrono::steady_clock::now();
  Batch made(std::move(plan), batch, std::move(task));
  const ExitStatus status = made.run();
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  if (batch.json) printReport(made, status, seconds.count());
  return status;
}

void addWarnings(const SensorCalibration& calibration, BatchPlan& plan) {
  const auto& more = calibration.warnings();
  plan.warnings.insert(plan.warnings.end(), more.begin(), more.end());
}

std::string givenForPictures(const CLI::App& command, const std::string& group,
                             std::vector<std::string> leftOut) {
  leftOut.insert(leftOut.end(), {"--output", "--type"});
  return givenOptions(command, {"Input", group, "Output"}, leftOut);
}

Compression compressionOf(const CompressionOptions& o) {
  Compression c;
  c.lzw = o.compression == "lzw";
  if (!c.lzw && !o.compression.empty()) c.level = std::stoi(o.compression);
  c.quality = o.quality.value_or(c.quality);
  if (!o.chroma.empty())
    c.chroma = o.chroma == "420" ? Chroma::k420 : o.chroma == "422" ? Chroma::k422 : Chroma::k444;
  return c;
}

std::string commandText(const char* command, const std::filesystem::path& from, const Job& job,
                        const std::string& options) {
  std::string text = fmt::format("vistrel {} {}", command, fileWord(from));
  if (!options.empty()) text += " " + options;
  return job.frame ? fmt::format("{} --frame {}", text, *job.frame) : text;
}

std::string fileWord(const std::filesystem::path& path) {
  const std::string name = path.string();
  return quoted(name.size() > 1 && name[0] == '-' ? "./" + name : name);
}

void addPictureInputs(CLI::App& command, PictureRequest& request) {
  command.add_option("IN", request.inputs, "Frames, or folders of them")->required();
  inGroup(command, "Input", [&] { addPhaseOption(command, request.input.phase); });
  addInputOptions(command, request.input);
}

CLI::Option* addPictureOutputs(CLI::App& command, PictureRequest& request) {
  CLI::Option* output = nullptr;
  inGroup(command, "Output", [&] {
    output = command.add_option_function<std::string>(
        "-o,--output",
        [&request](const std::string& text) {
          if (text.empty())
            throwError(kUsage, "-o: the name of a picture or of a folder is expected");
          request.output = text;
        },
        "Picture, by its extension; a folder; or - or png:-");
    output->type_name("OUT");
    oneOf(command.add_option("--type", request.type,
                             "png, jpg, tiff, pam, ppm, pgm, npy, raw or dng, in a folder (png)"),
          {"png", "jpg", "tiff", "pam", "ppm", "pgm", "npy", "raw", "dng"})
        ->type_name("TYPE");
    addCompressionOptions(command, request.compression);
  });
  inGroup(command, "Batch", [&] { addBatchOptions(command, request.batch); });
  return output;
}

void rejectConflicts(const std::vector<std::string>& conflicts) {
  if (!conflicts.empty()) throwError(kUsage, "{}", fmt::join(conflicts, "\nvistrel: "));
}

}  // namespace vistrel::app
