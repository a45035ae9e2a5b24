// What there is to choose from: formats, algorithms, phases.
#pragma once

#include <string>

#include "host/vistrel_host.h"

namespace vistrel::host {

struct Format {
  uint32_t code;
  const char* name;
  bool colour;
  uint32_t channels;  // samples of a pixel
  uint32_t sensed;    // of these, the ones that hold light; the other is alpha
  uint32_t sampleBytes;
};

inline bool isGray(const Format& f) { return f.colour && f.channels == 1; }

// Whether an algorithm looks beside the region, and leaves its image without a guard.
inline bool isCompact(uint32_t algorithm) {
  return algorithm == DM_NEAR_NEIGHBOR || algorithm == VISTREL_AHD;
}

// Null for a code that is not in the table.
const Format* findFormat(uint32_t code);
const vistrel_algorithm* findAlgorithm(uint32_t code);

// For texts: "MONO8 (0), MONO16 (1)".
std::string formatList(bool colour);
std::string algorithmList();
std::string phaseList();

}  // namespace vistrel::host
