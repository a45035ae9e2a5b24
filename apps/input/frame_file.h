// Frames on disk, of any kind that there is a reader for.
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

// An open file whose header is read and whose length is enough.
class FrameFile {
 public:
  // Throws Failure: input/output where it cannot be read, rejected where it is no frame.
  FrameFile(const std::filesystem::path& path, const InputOptions& options);

  // Size, bits and phase, the samples still to come. `phase` is VISTREL_MONO where nothing tells.
  const vistrel_frame& frame() const { return frame_; }
  uint64_t frames() const { return description().frames; }

  // What the file itself tells.
  const Description& description() const { return reader_->description(); }

  // Where the options say other than the file, what is left for them to say, and what of the file
  // is no frame: sentences for the user. read() may add one.
  const std::vector<std::string>& remarks() const { return remarks_; }

  // Reads the samples of frame n, or of the one that the options name, into memory of this object,
  // packed and in this machine's byte order.
  const vistrel_frame& read(uint64_t n);
  const vistrel_frame& read() { return read(chosen_); }

 private:
  void describe(const InputOptions& options);
  bool hasHighBits(const InputOptions& options) const;
  void remark(const InputOptions& options);
  void remarkUnusedBits();

  std::unique_ptr<Source> source_;
  std::unique_ptr<Reader> reader_;
  vistrel_frame frame_{};
  uint64_t chosen_;
  bool bitsAreTold_;
  std::vector<std::string> remarks_;
  std::vector<uint16_t> samples_;
};

// On standard error.
void printRemarks(const FrameFile& file, const std::string& name);

}  // namespace vistrel::app
