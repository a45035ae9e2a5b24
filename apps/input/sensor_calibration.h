// Dark frames, flat fields and lists of hot pixels in files.
#pragma once

#include <array>
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
  // Reads the files. Frames are described as `input` does, apart from names, which describe only
  // the frames themselves; a phase isn't needed. Their own samples count as they are; of the flat
  // field's, the dark frame's and its file's black level are subtracted. Throws ProgramError that
  // names the option.
  SensorCalibration(const CalibrationOptions& options, InputOptions input);
  SensorCalibration(const SensorCalibration&) = delete;
  SensorCalibration& operator=(const SensorCalibration&) = delete;

  bool isEmpty() const { return !calibration_.dark && !calibration_.flat && hotOption_.empty(); }

  bool hasDark() const { return calibration_.dark; }
  // The mean level of the dark frame, rounded.
  uint32_t darkMean() const;
  // The dark frame alone.
  vistrel_calibration darkOnly() const;

  // Messages for the user.
  const std::vector<std::string>& warnings() const { return warnings_; }

  // Makes the conversion use what there is, as long as this object lives. Throws ProgramError if it
  // is not for frames of this size and phase, or a dark frame not for these bits.
  void apply(const vistrel_frame& frame, vistrel_conversion& conversion) const;

 private:
  struct Levels {
    std::string option;  // "--dark dark.pgm"
    uint32_t width = 0, height = 0, phase = 0, bits = 0;
    std::vector<uint16_t> values;

    void describe(const vistrel_frame& frame);
    void checkFits(const vistrel_frame& frame) const;
  };

  void readDark(const std::string& path, const InputOptions& input);
  void readFlat(const std::string& path, const InputOptions& input);
  void readHot(const std::string& path);
  void checkFits(const vistrel_frame& frame) const;
  void warnOfDarkness(const vistrel_frame& flat, const vistrel_conversion& conversion);

  Levels dark_, flat_;
  std::string hotOption_;
  std::vector<vistrel_point> hot_;
  vistrel_calibration calibration_{};
  std::vector<std::string> warnings_;
};

}  // namespace vistrel::app
