#include "apps/input/readers.h"

#include <algorithm>
#include <bit>
#include <span>

#include "apps/error.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

constexpr size_t kHead = 64;

// Camera raw files come first, recognised by extension, since many of them look like TIFFs.
constexpr const ReaderType* kTypes[] = {&kCameraRaw, &kPgm,  &kPng,     &kNpy,
                                        &kTiff,      &kFits, &kGzipFits};

const ReaderType* typeOf(const Source& source, std::span<const ReaderType* const> types) {
  const std::string head = source.head(kHead);
  for (const ReaderType* type : types)
    if (type->recognises(source, head)) return type;
  return nullptr;
}

}  // namespace

const char* kindOf(const Source& source) {
  const ReaderType* const type = typeOf(source, std::span(kTypes).subspan(1));
  return type ? type->name : nullptr;
}

std::unique_ptr<Reader> openReader(const Source& source, const InputOptions& options) {
  if (source.size() == 0) throwError(kRejected, "the file is empty");
  if (const ReaderType* type = typeOf(source, kTypes)) return type->open(source, options);
  throwError(kRejected,
             "unknown kind of frame; --size WxH reads headerless raw files, and `vistrel guess` "
             "finds their size and format");
}

void checkSize(const Description& d, const Source& source, uint32_t storedBits, uint64_t available,
               uint64_t ratio) {
  vistrel_frame frame{};
  frame.width = d.width;
  frame.height = d.height;
  frame.bytes_per_sample = d.bytesPerSample;
  frame.bits = d.bits;
  frame.phase = VISTREL_MONO;
  layoutOf(frame, defaultConversion(frame));
  const uint64_t rowBytes = (uint64_t{d.width} * storedBits + 7) / 8;
  if (rowBytes > available * ratio / d.height)
    throwError(kRejected, "the file is too short: {}x{} samples of {} bits do not fit its {} bytes",
               d.width, d.height, storedBits, source.size());
}

uint32_t bitsOfLargest(uint64_t largest, uint32_t stored) {
  const auto bits = static_cast<uint32_t>(std::bit_width(largest));
  return std::has_single_bit(largest + 1) && bits >= 8 && bits <= stored ? bits : stored;
}

}  // namespace vistrel::app
