// Options that describe the inputs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "apps/names/pixel_format.h"
#include "apps/options/geometry.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vistrel::app {

// Real numbers that become samples of 0 and 65535.
struct RealRange {
  double low, high;
};

struct InputOptions {
  std::optional<Size> size;             // of a headerless raw file
  const PixelFormat* pixfmt = nullptr;  // of a headerless raw file: phase, bits and packing
  bool bigEndian = false;
  bool highBits = false;    // of 16-bit samples, the high bits are significant
  uint64_t skip = 0;        // bytes before the first sample
  size_t stride = 0;        // bytes from one row to the next; 0: packed
  bool continuous = false;  // rows need not begin at a byte boundary
  std::optional<uint32_t> bits;
  std::optional<uint32_t> phase;
  bool fromName = false;
  std::optional<uint64_t> frame;  // index of one frame among several
  std::optional<RealRange> range;
  bool needsPhase = false;  // reject a file that doesn't specify its phase
  bool arriving = false;    // frames of a pipe are converted before the next ones arrive

  // Throws ProgramError (usage) if a required option is missing.
  void check() const;
  void checkWithPhase();  // sets needsPhase
};

// -s, --bits, --endian, --pixfmt, --align, --skip, --stride, --frame, --range, --from-name.
void addInputOptions(CLI::App& command, InputOptions& options);

// --phase.
CLI::Option* addPhaseOption(CLI::App& command, std::optional<uint32_t>& phase);

}  // namespace vistrel::app
