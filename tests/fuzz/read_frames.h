// Reads the first and last frames of a reader into memory of the exact size.
#pragma once

#include <vector>

#include "apps/input/reader.h"

namespace vistrel {

inline void readFrames(app::Reader& reader) {
  constexpr size_t kMax = 1 << 22;
  const app::Description& d = reader.description();
  const size_t bytes = size_t{d.width} * d.height * d.bytesPerSample;
  if (bytes > kMax) return;
  for (const uint64_t n : {uint64_t{0}, d.frames - 1}) {
    std::vector<uint8_t> samples(bytes);
    reader.read(n, samples.data());
  }
}

}  // namespace vistrel
