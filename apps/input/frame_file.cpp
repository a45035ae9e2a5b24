#include "apps/input/frame_file.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>

#include "apps/failure.h"
#include "apps/input/pgm_header.h"
#include "apps/options/frame_name.h"
#include "host/vistrel.hpp"

namespace vistrel::app {
namespace {

// A maxval of n set bits tells the depth, up to 15; the largest one only that there are two bytes.
uint32_t bitsOf(uint32_t maxval) {
  if (maxval <= 255) return 8;
  return std::has_single_bit(maxval + 1) ? static_cast<uint32_t>(std::bit_width(maxval)) : 16;
}

// Refuses what is no frame at all, before its samples take memory.
void checkShape(vistrel_frame frame) {
  frame.phase = VISTREL_MONO;
  layoutOf(frame, defaultConversion(frame));
}

}  // namespace

void checkIsFile(const std::filesystem::path& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) fail(kInputOutput, "cannot be read: {}", error.message());
  if (!std::filesystem::is_regular_file(status)) fail(kInputOutput, "it is not a regular file");
}

void InputOptions::check() const {
  if (size && !bits && !fromName)
    fail(kUsage, "--bits is missing: a header-less dump does not tell its depth");
}

void InputOptions::checkWithPhase() const {
  check();
  if (!phase && !fromName)
    fail(kUsage,
         "--phase is missing. It names the colours of the 2x2 block at the frame's left upper "
         "corner: rggb, bggr, grbg or gbrg; mono stands for a frame without colour filters. "
         "With --from-name the file's name tells it");
}

FrameFile::FrameFile(const std::filesystem::path& path, const InputOptions& options) : path_(path) {
  checkIsFile(path);
  in_.open(path, std::ios::binary);
  if (!in_) fail(kInputOutput, "cannot be read: {}", std::strerror(errno));
  if (options.size)
    describeDump(options);
  else
    describePgm();
  describeBitsAndPhase(options);
  checkShape(frame_);
  checkLength();
}

void FrameFile::describePgm() {
  const PgmHeader header = readPgmHeader(in_);
  maxval_ = header.maxval;
  frame_.width = header.width;
  frame_.height = header.height;
  frame_.bytes_per_sample = header.maxval > 255 ? 2 : 1;
  frame_.bits = bitsOf(header.maxval);
  offset_ = static_cast<uint64_t>(in_.tellg());
}

void FrameFile::describeDump(const InputOptions& options) {
  frame_.width = options.size->width;
  frame_.height = options.size->height;
  frame_.stride = options.stride;
  bigEndian_ = options.bigEndian;
  offset_ = options.skip;
}

void FrameFile::describeBitsAndPhase(const InputOptions& options) {
  frame_.phase = VISTREL_MONO;
  if (options.fromName) {
    const FrameName name = parseFrameName(path_.stem().string());
    frame_.bits = name.bits;
    frame_.phase = name.phase;
  }
  frame_.bits = options.bits.value_or(frame_.bits);
  frame_.phase = options.phase.value_or(frame_.phase);
  if (options.size) frame_.bytes_per_sample = frame_.bits > 8 ? 2 : 1;
}

size_t FrameFile::rowBytes() const { return size_t{frame_.width} * frame_.bytes_per_sample; }

void FrameFile::checkLength() {
  const uint64_t size = std::filesystem::file_size(path_);
  const uint64_t left = size - std::min(offset_, size);
  const uint64_t stride = frame_.stride ? frame_.stride : rowBytes();
  if (left < rowBytes() || (frame_.height - 1) > (left - rowBytes()) / stride)
    fail(kRejected, "the file is too short: {}x{} samples of {} bits do not fit its {} bytes",
         frame_.width, frame_.height, 8 * frame_.bytes_per_sample, size);
}

const vistrel_frame& FrameFile::read() {
  const size_t bytes = rowBytes() * frame_.height;
  samples_.resize((bytes + 1) / 2);
  readRows(reinterpret_cast<char*>(samples_.data()));
  if (!in_) fail(kInputOutput, "cannot be read: {}", std::strerror(errno));
  if (frame_.bytes_per_sample == 2 && bigEndian_ != (std::endian::native == std::endian::big))
    for (uint16_t& s : samples_) s = static_cast<uint16_t>(s << 8 | s >> 8);
  frame_.samples = samples_.data();
  frame_.size = bytes;
  frame_.stride = 0;
  return frame_;
}

void FrameFile::readRows(char* to) {
  const auto row = static_cast<std::streamsize>(rowBytes());
  in_.seekg(static_cast<std::streamoff>(offset_));
  if (frame_.stride == 0) {
    in_.read(to, row * frame_.height);
    return;
  }
  for (uint32_t y = 0; y < frame_.height; ++y) {
    if (y) in_.ignore(static_cast<std::streamsize>(frame_.stride) - row);
    in_.read(to + y * row, row);
  }
}

}  // namespace vistrel::app
