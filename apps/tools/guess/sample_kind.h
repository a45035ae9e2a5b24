// The bits of samples that are in use, and the colours that they sense.
#pragma once

#include <cstdint>
#include <vector>

#include "apps/tools/guess/row_reader.h"

namespace vistrel::app {

struct SampleKind {
  uint32_t bits;        // significant bits in use
  bool highBits;        // of 16-bit samples, the high bits are significant
  uint32_t phase;       // the green sites are measured; red and blue are arbitrary
  uint32_t otherPhase;  // with red and blue exchanged; the same for mono
};

// Of the first frame.
SampleKind sampleKindOf(const std::vector<uint8_t>& bytes, const Layout& layout, uint32_t height);

}  // namespace vistrel::app
