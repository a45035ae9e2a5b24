// The tables of formats, algorithms and phases.
#pragma once

#include <functional>
#include <string>

#include "demosaic/direct_rows.h"
#include "output/pixels.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// How the samples of a pixel lie: side by side, or in planes.
enum class Arrangement { interleaved, planes, nv12, i420, i444 };

struct Format : vistrel_format {
  bool redFirst;              // in the pixels that it is made from; otherwise blue comes first
  core::DirectFormat direct;  // what algorithms store that can store it directly
  // Converts those pixels; null if they stay as they are.
  core::PixelFunction core::PixelFormatKernels::*convert;
  Arrangement arrangement = Arrangement::interleaved;

  bool colour() const { return !mono; }
  bool gray() const { return !mono && channels == 1; }
  // The bytes of a pixel in the first plane.
  uint32_t pixelBytes() const { return (planes > 1 ? 1 : channels) * bytes_per_sample; }
};

// The number of rows that must be made together: 2 if pairs of rows share chroma.
inline uint32_t rowsPerChroma(const Format& format) {
  return format.arrangement == Arrangement::nv12 || format.arrangement == Arrangement::i420 ? 2 : 1;
}

// Null for an unknown code.
const Format* findFormat(uint32_t code);

// For messages: "MONO8 (0), MONO16 (1)".
std::string formatList(const std::function<bool(const Format&)>& lists);
std::string algorithmList();
std::string phaseList();

}  // namespace vistrel::host
