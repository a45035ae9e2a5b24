// What there is to choose from: formats, algorithms, phases.
#pragma once

#include <string>

#include "host/pixels.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

struct Format : vistrel_format {
  uint32_t made;  // the library's format that it is made of; its own code, if the library has it
  Finish finish;  // how; else null

  bool colour() const { return !mono; }
  bool gray() const { return !mono && channels == 1; }
  uint32_t sensed() const { return channels == 1 ? 1 : 3; }  // channels without alpha
  uint32_t pixelBytes() const { return channels * bytes_per_sample; }
};

// Whether an algorithm looks beside the region, and leaves its image without a guard.
inline bool isCompact(uint32_t algorithm) {
  return algorithm == VISTREL_NEAR || algorithm == VISTREL_AHD;
}

// Null for a code that is not in the table.
const Format* findFormat(uint32_t code);
const vistrel_algorithm* findAlgorithm(uint32_t code);

// For texts: "MONO8 (0), MONO16 (1)".
std::string formatList(bool colour);
std::string algorithmList();
std::string phaseList();

}  // namespace vistrel::host
