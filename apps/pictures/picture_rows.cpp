#include "apps/pictures/picture_rows.h"

#include <cstring>

#include "apps/files/source.h"

namespace vistrel::app {

PictureRows::PictureRows(const Image& image, Depth depth, std::endian order)
    : image_(image),
      scaled_(depth == Depth::kScaled && image.layout.bits > 8 && image.layout.bits < 16),
      swapped_(image.layout.bits > 8 && order != std::endian::native) {
  if (scaled_ || swapped_) row_.resize(bytes() / 2);
}

const uint8_t* PictureRows::row(uint32_t y) {
  const uint8_t* const from = image_.pixels.data() + y * bytes();
  if (row_.empty()) return from;
  std::memcpy(row_.data(), from, bytes());
  const uint32_t bits = image_.layout.bits;
  if (scaled_)
    for (uint16_t& sample : row_)
      sample = static_cast<uint16_t>(sample << (16 - bits) | sample >> (2 * bits - 16));
  if (swapped_) swapBytes(row_.data(), row_.size());
  return reinterpret_cast<const uint8_t*>(row_.data());
}

}  // namespace vistrel::app
