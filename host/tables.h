// The tables of formats, algorithms and phases.
#pragma once

#include <string>

#include "host/pixels.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

struct Format : vistrel_format {
  uint32_t native;  // the library's format that it is made from; its own code, if it is native
  Repack repack;    // from there; null if it is native

  bool colour() const { return !mono; }
  bool gray() const { return !mono && channels == 1; }
  uint32_t sensed() const { return channels == 1 ? 1 : 3; }  // channels without alpha
  uint32_t pixelBytes() const { return channels * bytes_per_sample; }
};

// Whether an algorithm reads samples outside the region, and leaves its image without a guard.
inline bool isCompact(uint32_t algorithm) {
  return algorithm == VISTREL_NEAR || algorithm == VISTREL_AHD;
}

// Null for an unknown code.
const Format* findFormat(uint32_t code);
const vistrel_algorithm* findAlgorithm(uint32_t code);

// For messages: "MONO8 (0), MONO16 (1)".
std::string formatList(bool colour);
std::string algorithmList();
std::string phaseList();

}  // namespace vistrel::host
