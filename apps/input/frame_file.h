// Frames on disk: binary PGM, and header-less dumps that the command line describes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <vector>

#include "apps/options/geometry.h"

namespace vistrel::app {

// Throws Failure (input/output) for what is no file that can be read.
void checkIsFile(const std::filesystem::path& path);

// What the command line says about the inputs.
struct InputOptions {
  std::optional<Size> size;  // of a header-less dump
  bool bigEndian = false;
  uint64_t skip = 0;  // bytes before the first sample
  size_t stride = 0;  // bytes from row to row; 0: packed
  std::optional<uint32_t> bits;
  std::optional<uint32_t> phase;
  bool fromName = false;

  // Throws Failure (usage) where something is missing.
  void check() const;
  void checkWithPhase() const;
};

// An open file whose header is read and whose length is enough.
class FrameFile {
 public:
  // Throws Failure: input/output where it cannot be read, rejected where it is no frame.
  FrameFile(const std::filesystem::path& path, const InputOptions& options);

  // Size, bits and phase, the samples still to come. `phase` is VISTREL_MONO where nothing tells.
  const vistrel_frame& frame() const { return frame_; }
  std::optional<uint32_t> maxval() const { return maxval_; }  // of a PGM

  // Reads the samples into memory of this object, packed and in this machine's byte order.
  const vistrel_frame& read();

 private:
  void describePgm();
  void describeDump(const InputOptions& options);
  void describeBitsAndPhase(const InputOptions& options);
  size_t rowBytes() const;
  void checkLength();
  void readRows(char* to);

  std::filesystem::path path_;
  std::ifstream in_;
  vistrel_frame frame_{};
  std::optional<uint32_t> maxval_;
  bool bigEndian_ = true;
  uint64_t offset_ = 0;  // bytes
  std::vector<uint16_t> samples_;
};

}  // namespace vistrel::app
