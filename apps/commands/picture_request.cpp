#include "apps/commands/picture_request.h"

#include <algorithm>
#include <charconv>

#include "apps/error.h"
#include "apps/input/frame_names.h"
#include "apps/names/output_type.h"
#include "apps/options/algorithm.h"
#include "apps/options/help.h"
#include "apps/options/options.h"
#include "apps/options/output_format.h"

namespace vistrel::app {
namespace {

// Every N-th job, whatever has been done already: all runs of an array agree about the parts.
void takeShard(std::vector<Job>& jobs, const Shard& shard) {
  std::vector<Job> part;
  for (size_t i = shard.index - 1; i < jobs.size(); i += shard.count) part.push_back(jobs[i]);
  jobs = std::move(part);
}

FrameRate parseRate(const std::string& text) {
  FrameRate rate;
  const size_t slash = std::min(text.find('/'), text.size());
  const auto isNumber = [](const std::string& digits, uint32_t& number) {
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc{} && rest == end && number > 0;
  };
  if (!isNumber(text.substr(0, slash), rate.frames) ||
      (slash < text.size() && !isNumber(text.substr(slash + 1), rate.seconds)))
    throwError(kUsage, "--fps {}: frames per second are expected, as 25 or 30000/1001", text);
  return rate;
}

}  // namespace

BatchPlan PictureRequest::plan(RunFiles& files) {
  input.arriving = isFilm(output);
  const FramesOf framesOf = [this](const std::filesystem::path& path, auto& warnings) {
    return input.frame ? 1 : FrameFile(path, input, warnings).frames();
  };
  const IsFrame isFrame = input.size ? isHeaderlessName : isFrameName;
  const std::string extension = "." + (type.empty() ? "png" : type);
  BatchPlan plan = planJobs(
      {inputs, output, extension, isFrame, framesOf, batch.recursive, input.arriving, input.frame},
      files);
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
  if (!type.empty() && !isSameType(pictureType("x." + type), outputType(first)))
    addConflict("--type " + type,
                "a picture's name sets its type, --type that of pictures in a folder");
  if (rate && outputKind(output) != OutputKind::y4m) addConflict("--fps", "only a Y4M has a rate");
  const PictureType& kind = outputType(first);
  if (isDng(kind) && !mosaic)
    addConflict("demosaicing", "a .dng holds a raw frame; --mosaic writes one");
  if (mosaic) frameType(first);
  for (const std::string& option : compression.unusedFor(kind.extension))
    addConflict(option, "that type is not compressed so");
  if (!isFilm(output) && !isStandardOutput(output)) return found;
  const char* const why = isStandardOutput(output) ? "standard output is for the picture alone"
                                                   : "all pictures go to one file";
  if (batch.json) addConflict("--json", why);
  if (!batch.manifest.empty()) addConflict("--manifest " + batch.manifest, why);
  if (batch.shard.count > 1) addConflict("--shard", why);
  return found;
}

ExitStatus PictureRequest::run(BatchPlan plan, BatchTask task) const {
  if (isFilm(output))
    return Film(std::move(plan), batch, std::move(task), rate.value_or(FrameRate{})).run();
  takeShard(plan.jobs, batch.shard);
  Batch made(std::move(plan), batch, std::move(task));
  const ExitStatus status = made.run();
  if (batch.json) printReport(made, status);
  return status;
}

void addOrigin(const FrameFile& file, Preview& preview) {
  const vistrel_frame& frame = file.frame();
  preview.phase = vistrel_phase_name(frame.phase);
  preview.frameBits = frame.bits;
  preview.frameBytes = uint64_t{frame.width} * frame.height * frame.bytes_per_sample;
}

void addOrigin(const FrameFile& file, const vistrel_conversion& conversion, Preview& preview) {
  addOrigin(file, preview);
  for (size_t i = 0; file.frame().phase < VISTREL_MONO && vistrel_algorithm_at(i); ++i)
    if (vistrel_algorithm_at(i)->code == conversion.algorithm)
      preview.algorithm = labelOf({vistrel_algorithm_at(i), conversion.threshold});
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
        "Picture or film, by its extension; folder; -, raw:-");
    output->type_name("OUT");
    oneOf(command.add_option(
              "--type", request.type,
              "png, jpg, tiff, pam, ppm, pgm, pnm, npy, raw or dng, in a folder (png)"),
          folderTypes())
        ->type_name("TYPE");
    addCompressionOptions(command, request.compression);
    command
        .add_option_function<std::string>(
            "--fps", [&request](const std::string& s) { request.rate = parseRate(s); },
            "Frames per second of a .y4m, as 25 or 30000/1001 (25)")
        ->type_name("N[/D]");
  });
  inGroup(command, "Batch", [&] { addBatchOptions(command, request.batch); });
  return output;
}

void rejectConflicts(const std::vector<std::string>& conflicts) {
  if (!conflicts.empty()) throwError(kUsage, "{}", fmt::join(conflicts, "\nvistrel: "));
}

}  // namespace vistrel::app
