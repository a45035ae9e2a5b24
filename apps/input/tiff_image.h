// The images that a TIFF holds, and which of them are frames.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/input/tiff_input.h"

namespace vistrel::app {

// One directory of a TIFF, as far as it matters for a frame.
struct TiffImage {
  uint64_t offset;  // of the directory
  uint32_t width, height;
  uint32_t bits;  // of a stored sample
  uint32_t samplesPerPixel, photometric, compression, sampleFormat;
  bool reduced;   // a smaller copy of another image
  bool isLinear;  // samples need no table of the file
  uint32_t x, y;  // where the area begins that saw light; `width` and `height` are the area's
  uint32_t columns, rows;  // of all that is stored
  std::optional<uint32_t> phase;
  std::string phaseFault;  // what is wrong with the tags that tell it
  std::optional<double> black, white;
  std::optional<uint32_t> orientation;
};

// The mosaics of the main directories and those below them; where there are none, the gray images.
// Throws Failure for a TIFF without either.
std::vector<TiffImage> findTiffFrames(TiffInput& tiff);

}  // namespace vistrel::app
