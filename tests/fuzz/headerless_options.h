// How to read a headerless raw file, from a fuzzer's bytes.
#pragma once

#include "apps/names/pixel_format.h"
#include "apps/options/input_options.h"
#include "tests/fuzz/input.h"

namespace vistrel {

inline app::InputOptions takeHeaderlessOptions(Input& in) {
  app::InputOptions o;
  const uint32_t width = in.below(64), height = in.below(64), format = in.below(128);
  o.size = app::Size{width, height};
  o.bits = in.below(20);
  const auto& formats = app::pixelFormats();
  if (format < formats.size()) o.pixfmt = &formats[format];
  if (o.pixfmt && in.take() & 1) o.bits.reset();
  const uint8_t flags = in.take();
  o.bigEndian = flags & 1;
  o.highBits = flags & 2;
  o.skip = flags & 4 ? in.take<uint64_t>() : flags >> 4;
  if (flags & 8) o.stride = flags & 16 ? in.take<uint64_t>() : in.take();
  return o;
}

}  // namespace vistrel
