// The images of a TIFF, and which of them are frames.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/input/tiff_input.h"

namespace vistrel::app {

// One directory of a TIFF: what matters for a frame.
struct TiffImage {
  uint64_t offset;  // of the directory
  uint32_t width, height;
  uint32_t bits;  // per stored sample
  uint32_t samplesPerPixel, photometric, compression, sampleFormat;
  bool reduced;                 // a smaller copy of another image
  std::vector<uint16_t> table;  // from stored values to samples; empty: they are the same
  uint32_t x, y;                // origin of the active area; `width` and `height` are its size
  uint32_t columns, rows;       // of the whole stored image
  std::optional<uint32_t> phase;
  std::string phaseFault;  // what is wrong with its tags
  std::optional<double> white;
};

// Of a sample after the table: 2 if it can need more than 8 bits.
uint32_t bytesPerSample(const TiffImage& image);

// The bits that the white level needs, and the table if there is one; neither need be 2^n - 1.
uint32_t significantBits(const TiffImage& image);

// The mosaics in the main directories and their subdirectories; if there are none, the gray
// images. Throws ProgramError if there are neither.
std::vector<TiffImage> findTiffFrames(TiffInput& tiff);

}  // namespace vistrel::app
