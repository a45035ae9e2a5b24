// Dark frames, flat fields and lists of hot pixels in files.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "apps/files/run_files.h"
#include "apps/input/frame_file.h"
#include "apps/options/calibration_options.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// Adds the files that the options name.
void addReadFiles(const CalibrationOptions& options, RunFiles& files);

class SensorCalibration {
 public:
  // Reads the files. Frames are described as `input` does, and their own samples count as they are;
  // of the flat field's, the dark frame's and its file's black level are subtracted. Throws
  // ProgramError that names the option.
  SensorCalibration(const CalibrationOptions& options, const InputOptions& input);
  SensorCalibration(const SensorCalibration&) = delete;
  SensorCalibration& operator=(const SensorCalibration&) = delete;

  bool isEmpty() const { return !calibration_.dark && !calibration_.flat && hotOption_.empty(); }

  // Makes the conversion use what there is, as long as this object lives. Throws ProgramError if it
  // is not for frames of this size.
  void apply(const vistrel_frame& frame, vistrel_conversion& conversion) const;

 private:
  struct Levels {
    std::string option;  // "--dark dark.pgm"
    uint32_t width = 0, height = 0;
    std::vector<uint16_t> values;
  };

  void readDark(const std::string& path, const InputOptions& input);
  void readFlat(const std::string& path, const InputOptions& input);
  void readHot(const std::string& path);
  static void checkSize(const Levels& levels, const vistrel_frame& frame);

  Levels dark_, flat_;
  std::string hotOption_;
  std::vector<vistrel_point> hot_;
  vistrel_calibration calibration_{};
};

// The frame as samples of its own bits after dark, flat and hot pixels, with black levels of 0.
// `memory` holds them.
vistrel_frame calibratedFrame(const vistrel_frame& frame, const vistrel_conversion& conversion,
                              Image& memory);

}  // namespace vistrel::app
