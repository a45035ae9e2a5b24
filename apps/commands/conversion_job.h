// One job of the convert command: a frame whose header has been read, and its conversion.
#pragma once

#include <string>
#include <vector>

#include "apps/batch/batch.h"
#include "apps/input/frame_file.h"
#include "apps/input/sensor_calibration.h"
#include "apps/options/conversion_options.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {

class ConversionJob : public OpenJob {
 public:
  // Opens the frame and checks all that can be checked without its samples. Throws ProgramError and
  // Error. The options and the calibration must outlive the object.
  ConversionJob(const Job& job, const InputOptions& input, const ConversionOptions& options,
                const SensorCalibration& calibration);

  Preview preview() const override;
  JobOutput run(Worker& worker) override;
  uint64_t frames() const override { return file_.frames(); }
  bool has(uint64_t n) override { return file_.has(n); }
  const Image& make(uint64_t n, Worker& worker) override;

 private:
  [[noreturn]] void throwMisfit() const;
  void measureGains(const vistrel_frame& frame, vistrel_conversion& conversion);

  const Job& job_;
  const ConversionOptions& options_;
  FrameFile file_;
  vistrel_conversion conversion_;
  const PictureType& type_;
  vistrel_layout layout_;
  std::vector<std::string> notes_;
  std::vector<double> gains_;
};

}  // namespace vistrel::app
