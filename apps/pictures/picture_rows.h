// The rows of an image as picture files have them.
#pragma once

#include <bit>
#include <cstdint>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// What happens to samples of 9 to 15 bits.
enum class Depth {
  kKept,
  kScaled  // to 16 bits: the highest bits are repeated below, so that white stays white
};

// Samples of 8 bits take a byte each, also if the image has them in two.
class PictureRows {
 public:
  // The image must outlive the object.
  PictureRows(const Image& image, Depth depth, std::endian order);

  uint32_t count() const { return image_.layout.height; }
  size_t bytes() const { return image_.layout.row_bytes / (narrowed_ ? 2 : 1); }

  // Valid until the next call.
  const uint8_t* row(uint32_t y);

 private:
  const Image& image_;
  const bool narrowed_, scaled_, swapped_;
  std::vector<uint16_t> row_;  // empty if rows of the image are as they should be
};

}  // namespace vistrel::app
