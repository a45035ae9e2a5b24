// One job of the develop command: a frame whose header has been read, its look, its picture.
#pragma once

#include <optional>
#include <string>

#include "apps/commands/develop_options.h"
#include "apps/commands/file_job.h"
#include "apps/input/sensor_calibration.h"

namespace vistrel::app {

// What all jobs of a batch share.
class Development {
 public:
  // `given`: the options of input and calibration as the user typed them.
  Development(const InputOptions& input, const DevelopOptions& options,
              const Compression& compression, std::string given)
      : input_(input), options_(options), compression_(compression), given_(std::move(given)),
        calibration_(options.conversion.calibration, input) {}

  const InputOptions& input() const { return input_; }
  const DevelopOptions& options() const { return options_; }
  const Compression& compression() const { return compression_; }
  const std::string& given() const { return given_; }
  const SensorCalibration& calibration() const { return calibration_; }

  // Decides the look of all frames, if they have the same, before any job runs: that of the first
  // one, or if failures don't stop the batch, of the first one that can be read.
  void lookAt(BatchPlan& plan, bool keepGoing);
  const std::optional<Look>& look() const { return look_; }
  // Throws ProgramError if that look, if any, is not for such frames.
  void checkSame(const vistrel_frame& frame) const;

 private:
  void lookAt(const Job& job);

  const InputOptions& input_;
  const DevelopOptions& options_;
  const Compression compression_;
  const std::string given_;
  const SensorCalibration calibration_;
  std::optional<Look> look_;
  uint32_t bits_ = 0, phase_ = 0;  // of the frame whose look that is
};

class DevelopmentJob : public FileJob {
 public:
  // Opens the frame and checks all that can be checked without its samples. Throws ProgramError and
  // Error. Warnings appear in the preview as they arise. The arguments must outlive the object.
  DevelopmentJob(const Job& job, const Development& development, Preview& preview);

  void describe() override;
  const Image& make(uint64_t n, Worker& worker) override;
  PictureDetails details() const override { return details_; }

  // The look that the frame would have by itself.
  Look decide();
  const vistrel_frame& frame() const { return file_.frame(); }

 private:
  void warnOfUnusedOptions();
  Look lookOf(const vistrel_frame& frame);
  void decided(const Look& look, uint64_t n);
  Look decide(const vistrel_frame& frame) const;
  AlgorithmChoice algorithm() const;
  nlohmann::ordered_json settingsOf(const Look& look) const;
  std::string optionsOf(const Look& look) const;

  const Development& development_;
  vistrel_conversion conversion_;
  const PictureType& type_;
  vistrel_layout layout_;
  PictureDetails details_;     // of the last frame
  std::optional<Look> first_;  // of the first frame, if all have the same and it arrives only once
};

}  // namespace vistrel::app
