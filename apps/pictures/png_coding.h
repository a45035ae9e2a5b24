// How to compress a PNG fast and well.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "apps/pictures/picture_rows.h"
#include "apps/pictures/png_filter.h"

namespace vistrel::app {

// Estimates how many bits deflate makes of bytes.
class DeflatedSize {
 public:
  void add(const std::vector<uint8_t>& bytes);

  uint64_t bitsOfBytes() const;  // each byte with a code of its own: Z_HUFFMAN_ONLY
  uint64_t bitsOfRuns() const;   // runs of equal bytes with one code: Z_RLE

 private:
  std::array<uint64_t, 256> bytes_{};
  std::array<uint64_t, 256 + 29> symbols_{};  // single bytes, then the lengths of runs
  uint64_t extra_ = 0;                        // bits of lengths and distances
};

struct PngCoding {
  PngFilter filter;
  int strategy;  // of zlib
};

// The filter and the fast strategy that need the fewest bits, by some of the rows. `step`: bytes of
// a pixel.
PngCoding pngCodingOf(PictureRows& rows, size_t step);

}  // namespace vistrel::app
