// The tables of formats, algorithms and phases.
#pragma once

#include <string>

#include "demosaic/finished_rows.h"
#include "output/pixels.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

struct Format : vistrel_format {
  bool redFirst;        // of the samples that it is made from; else blue
  core::Finish finish;  // how an algorithm that can stores it at once
  core::PixelFunction core::PixelFormatKernels::*convert;  // from these; null if they stay

  bool colour() const { return !mono; }
  bool gray() const { return !mono && channels == 1; }
  uint32_t pixelBytes() const { return channels * bytes_per_sample; }
};

// Whether the library's own gray of an algorithm is of use.
inline bool hasRawGray(uint32_t algorithm) {
  return algorithm != VISTREL_NEAR && algorithm != VISTREL_AHD;
}

// Null for an unknown code.
const Format* findFormat(uint32_t code);
const vistrel_algorithm* findAlgorithm(uint32_t code);

// For messages: "MONO8 (0), MONO16 (1)".
std::string formatList(bool colour);
std::string algorithmList();
std::string phaseList();

}  // namespace vistrel::host
