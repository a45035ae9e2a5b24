// The tables of formats, algorithms and phases.
#pragma once

#include <string>
#include <string_view>

#include "demosaic/finished_rows.h"
#include "output/pixels.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// How the samples of an image's pixels lie: side by side, or in planes.
enum class Arrangement { packed, planes, nv12, i420 };

struct Format : vistrel_format {
  bool redFirst;        // of the samples that it is made from; else blue
  core::Finish finish;  // how an algorithm that can stores it at once
  core::PixelFunction core::PixelFormatKernels::*convert;  // from these; null if they stay
  Arrangement arrangement = Arrangement::packed;

  bool colour() const { return !mono; }
  bool gray() const { return !mono && channels == 1; }
  // Of a pixel in the first plane.
  uint32_t pixelBytes() const { return (planes > 1 ? 1 : channels) * bytes_per_sample; }
};

// The rows of an image that must be made together: 2 where pairs of rows share their chroma.
inline uint32_t rowsThatBelongTogether(const Format& format) {
  return format.arrangement == Arrangement::nv12 || format.arrangement == Arrangement::i420 ? 2 : 1;
}

// Null for an unknown code.
const Format* findFormat(uint32_t code);

// For messages: "MONO8 (0), MONO16 (1)".
std::string formatList(bool colour);
std::string algorithmList();
std::string phaseList();

// Of any frame's phase.
std::string_view phaseName(uint32_t phase);

}  // namespace vistrel::host
