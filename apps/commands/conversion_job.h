// One job of the convert command: a frame whose header has been read, and its conversion.
#pragma once

#include <string>
#include <vector>

#include "apps/commands/file_job.h"
#include "apps/input/sensor_calibration.h"
#include "apps/options/conversion_options.h"

namespace vistrel::app {

// What all jobs of a batch share.
struct ConversionRun {
  const InputOptions& input;
  const ConversionOptions& options;
  const SensorCalibration& calibration;
  Compression compression;
  std::string given;  // the options of input and conversion as the user typed them
};

class ConversionJob : public FileJob {
 public:
  // Opens the frame and checks all that can be checked without its samples. Throws ProgramError and
  // Error. Warnings appear in the preview as they arise. All arguments must outlive the object.
  ConversionJob(const Job& job, const ConversionRun& run, Preview& preview);

  void describe() override;
  const Image& make(uint64_t n, Worker& worker) override;
  PictureDetails details() const override;

 private:
  [[noreturn]] void throwMisfit() const;
  void measureGains(const vistrel_frame& frame, vistrel_conversion& conversion);
  const ConversionRun& run_;
  const ConversionOptions& options_;
  vistrel_conversion conversion_;
  const PictureType& type_;
  vistrel_layout layout_;
};

}  // namespace vistrel::app
