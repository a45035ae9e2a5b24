// What the command line says about the inputs.
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

struct InputOptions {
  std::optional<Size> size;             // of a header-less dump
  const PixelFormat* pixfmt = nullptr;  // of a dump: phase, bits and packing
  bool bigEndian = false;
  bool highBits = false;    // samples lie in the high bits of their words
  uint64_t skip = 0;        // bytes before the first sample
  size_t stride = 0;        // bytes from row to row; 0: packed
  bool continuous = false;  // rows of a dump have no byte boundary between them
  std::optional<uint32_t> bits;
  std::optional<uint32_t> phase;
  bool fromName = false;
  std::optional<uint64_t> frame;  // of several
  bool needsPhase = false;        // a file that doesn't tell its phase is refused

  // Throws Failure (usage) where something is missing.
  void check() const;
  void checkWithPhase();  // sets needsPhase
};

// -s, --bits, --endian, --pixfmt, --align, --skip, --stride, --frame, --from-name.
void addInputOptions(CLI::App& command, InputOptions& options);

// --phase.
CLI::Option* addPhaseOption(CLI::App& command, std::optional<uint32_t>& phase);

}  // namespace vistrel::app
