// What commands that make pictures of frames share: inputs, outputs, the batch.
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

#include "apps/batch/batch.h"
#include "apps/batch/film.h"
#include "apps/input/frame_file.h"
#include "apps/options/batch_options.h"
#include "apps/options/input_options.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {

struct PictureRequest {
  std::vector<std::string> inputs;
  std::string output, type;       // output: empty if pictures lie beside their frames
  std::optional<FrameRate> rate;  // of a Y4M
  InputOptions input;
  BatchOptions batch;

  // What a frame's picture is; adds all files to `files`. Throws ProgramError.
  BatchPlan plan(RunFiles& files);

  // Messages for the user: options that conflict, for pictures like the first one.
  std::vector<std::string> conflicts(const std::filesystem::path& first) const;

  // Runs the batch, and reports as the options say. Throws ProgramError.
  ExitStatus run(BatchPlan plan, BatchTask task) const;
};

// Adds what the frame is and how it is converted.
void addOrigin(const FrameFile& file, const vistrel_conversion& conversion, Preview& preview);

// Writes a picture, which appears when the caller commits it. The preview stays empty.
JobOutput writePicture(const Image& image, const PictureType& type,
                       const std::filesystem::path& to);

// IN, the options of inputs.
void addPictureInputs(CLI::App& command, PictureRequest& request);
// -o, --type, and the options of batches.
CLI::Option* addPictureOutputs(CLI::App& command, PictureRequest& request);

// Throws ProgramError (usage) with all messages, if there are any.
void rejectConflicts(const std::vector<std::string>& conflicts);

}  // namespace vistrel::app
