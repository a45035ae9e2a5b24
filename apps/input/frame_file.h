// Frames in files of any kind that has a reader.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/input/reader.h"
#include "apps/options/input_options.h"

namespace vistrel::app {

// An open file: its header has been read, and it is long enough for its frames.
class FrameFile {
 public:
  // Throws ProgramError: input/output if it cannot be read, rejected if it is not a frame.
  FrameFile(const std::filesystem::path& path, const InputOptions& options);

  // Size, bits and phase, without the samples. `phase` is VISTREL_MONO if it is not specified.
  const vistrel_frame& frame() const { return frame_; }
  uint64_t frames() const { return description().frames; }
  // The frame that the options choose.
  uint64_t chosen() const { return chosen_; }
  // Whether there is a frame n. Frames that arrive are asked for in order, each before it is read.
  bool has(uint64_t n);

  // What the file itself says.
  const Description& description() const { return reader_->description(); }

  // Messages for the user: options that contradict the file, options that are advisable, and bytes
  // that belong to no frame. read() may add one about that frame, has() one about the end.
  const std::vector<std::string>& warnings() const { return warnings_; }

  // Reads the samples of frame n, or of the one that the options choose, into memory of this
  // object: packed, in native byte order.
  const vistrel_frame& read(uint64_t n);
  const vistrel_frame& read() { return read(chosen_); }

 private:
  void describe(const InputOptions& options);
  bool hasHighBits(const InputOptions& options) const;
  void addWarnings(const InputOptions& options);
  void warnOfTrailingBytes();
  void warnOfUnusedBits();

  std::unique_ptr<Source> source_;
  std::unique_ptr<Reader> reader_;
  vistrel_frame frame_{};
  uint64_t chosen_;
  bool bitsKnown_;
  std::vector<std::string> warnings_;
  size_t lasting_ = 0;  // the first so many warnings are about all frames
  std::vector<uint16_t> samples_;
};

// Prints the warnings on standard error.
void printWarnings(const FrameFile& file, const std::string& name);

}  // namespace vistrel::app
