// Frames in files of any kind that has a reader.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/input/reader.h"
#include "apps/options/input_options.h"
#include "apps/options/option_names.h"

namespace vistrel::app {

// An open file: its header has been read, and it is long enough for its frames.
class FrameFile {
 public:
  // Throws ProgramError: input/output if it cannot be read, rejected if it is not a frame. Adds
  // messages for the user to `warnings`, which must outlive the object: options that contradict the
  // file, options that are advisable, and bytes that belong to no frame. read() may add one.
  FrameFile(const std::filesystem::path& path, const InputOptions& options,
            std::vector<std::string>& warnings);

  // Size, bits and phase, without the samples. `phase` is VISTREL_MONO if it is not specified.
  const vistrel_frame& frame() const { return frame_; }
  bool knowsPhase() const { return phaseKnown_; }
  uint64_t frames() const { return description().frames; }
  // The frame that the options choose.
  uint64_t chosen() const { return chosen_; }
  // Whether there is a frame n. Frames that arrive are asked for in order, each before it is read.
  bool has(uint64_t n);

  // What the file itself says.
  const Description& description() const { return reader_->description(); }

  // Whether the file says how many bits are significant, and no option does.
  bool specifiesBits() const { return specifiesBits_; }

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
  bool bitsKnown_, specifiesBits_, phaseKnown_;
  std::vector<std::string>& warnings_;
  std::vector<uint16_t> samples_;
};

// Calls `action`; if it rejects a sample because of its bits, the error says that the file set
// them.
template <class Action>
decltype(auto) withOriginOfBits(const FrameFile& file, Action&& action) {
  try {
    return action();
  } catch (const Error& error) {
    if (std::string_view(error.argument()) != "frame.samples" || !file.specifiesBits()) throw;
    throwError(kRejected, "{}; the file says that {} bits are significant, --bits overrides it",
               textOf(error), file.frame().bits);
  }
}

// Warnings about a file, printed on standard error when the object's life ends, also by an error.
class PrintedWarnings {
 public:
  explicit PrintedWarnings(const std::string& name) : name_(name) {}
  ~PrintedWarnings();
  PrintedWarnings(const PrintedWarnings&) = delete;
  PrintedWarnings& operator=(const PrintedWarnings&) = delete;

  std::vector<std::string>& list() { return list_; }

 private:
  std::string name_;
  std::vector<std::string> list_;
};

}  // namespace vistrel::app
