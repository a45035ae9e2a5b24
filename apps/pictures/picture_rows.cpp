#include "apps/pictures/picture_rows.h"

#include <cstring>

#include "apps/files/source.h"

namespace vistrel::app {

PictureRows::PictureRows(const Image& image, Depth depth, std::endian order)
    : image_(image),
      narrowed_(image.layout.bits <= 8 &&
                image.layout.row_bytes == size_t{2} * image.layout.width * image.layout.channels),
      scaled_(depth == Depth::kScaled && image.layout.bits > 8 && image.layout.bits < 16),
      swapped_(image.layout.bits > 8 && order != std::endian::native) {
  if (narrowed_ || scaled_ || swapped_) row_.resize(image.layout.row_bytes / 2);
}

const uint8_t* PictureRows::row(uint32_t y) {
  const uint8_t* const from = image_.pixels.data() + y * image_.layout.row_bytes;
  if (row_.empty()) return from;
  std::memcpy(row_.data(), from, image_.layout.row_bytes);
  const uint32_t bits = image_.layout.bits;
  auto* const bytes = reinterpret_cast<uint8_t*>(row_.data());
  if (narrowed_)
    for (size_t i = 0; i < row_.size(); ++i) bytes[i] = static_cast<uint8_t>(row_[i]);
  if (scaled_)
    for (uint16_t& sample : row_)
      sample = static_cast<uint16_t>(sample << (16 - bits) | sample >> (2 * bits - 16));
  if (swapped_) swapBytes(row_.data(), row_.size());
  return bytes;
}

}  // namespace vistrel::app
