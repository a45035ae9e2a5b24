// What commands that make pictures of frames share: inputs, outputs, the batch.
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

#include "apps/batch/batch.h"
#include "apps/batch/film.h"
#include "apps/input/frame_file.h"
#include "apps/input/sensor_calibration.h"
#include "apps/options/batch_options.h"
#include "apps/options/compression_options.h"
#include "apps/options/input_options.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {

struct PictureRequest {
  std::vector<std::string> inputs;
  std::string output, type;       // output: empty if pictures lie beside their frames
  std::optional<FrameRate> rate;  // of a Y4M
  InputOptions input;
  BatchOptions batch;
  CompressionOptions compression;
  bool mosaic = false;  // frames are not to be demosaiced

  // What a frame's picture is; adds all files to `files`. Throws ProgramError.
  BatchPlan plan(RunFiles& files);

  // Messages for the user: options that conflict, for pictures like the first one.
  std::vector<std::string> conflicts(const std::filesystem::path& first) const;

  // Runs the batch, and reports as the options say. Throws ProgramError.
  ExitStatus run(BatchPlan plan, BatchTask task) const;
};

// Adds what the frame is, and how it is converted.
void addOrigin(const FrameFile& file, Preview& preview);
void addOrigin(const FrameFile& file, const vistrel_conversion& conversion, Preview& preview);

// Its warnings become those of the plan.
void addWarnings(const SensorCalibration& calibration, BatchPlan& plan);

// The options on which the contents of pictures depend, as the user gave them. `group`: that of the
// command's own ones.
std::string givenForPictures(const CLI::App& command, const std::string& group,
                             std::vector<std::string> leftOut = {});

// As writers take them.
Compression compressionOf(const CompressionOptions& options);

// "vistrel convert rose.pgm --phase rggb": what makes a job's picture. A picture should not name
// the folders of a machine, so `from` may be the name alone.
std::string commandText(const char* command, const std::filesystem::path& from, const Job& job,
                        const std::string& options);

// A name that is no option, for a shell.
std::string fileWord(const std::filesystem::path& path);

// IN, the options of inputs.
void addPictureInputs(CLI::App& command, PictureRequest& request);
// -o, --type, and the options of compression and batches.
CLI::Option* addPictureOutputs(CLI::App& command, PictureRequest& request);

// Throws ProgramError (usage) with all messages, if there are any.
void rejectConflicts(const std::vector<std::string>& conflicts);

}  // namespace vistrel::app
