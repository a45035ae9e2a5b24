#include "output/pixel_rows.h"

#include <cstring>

namespace vistrel::core {

PackedRows::PackedRows(const ImageMemory& image, size_t width, size_t sourceBytes,
                       size_t pixelBytes, PixelFunction convert, Arena& arena)
    : image_(image), sourceBytes_(sourceBytes), pixelBytes_(pixelBytes), convert_(convert) {
  if (image.bypassesCaches) line_ = arena.take<unsigned char>(width * pixelBytes);
}

void* PackedRows::inPlace(size_t y) { return convert_ || image_.bypassesCaches ? nullptr : row(y); }

void PackedRows::begin(size_t y) {
  next_ = image_.bypassesCaches ? line_ : row(y);
  if (image_.bypassesCaches) copy_ = NonTemporalCopy(row(y), line_);
}

void PackedRows::append(const void* pixels, size_t n) {
  const auto* const bytes = static_cast<const unsigned char*>(pixels);
  if (convert_)
    convert_(bytes, n, next_);
  else
    std::memcpy(next_, bytes, n * sourceBytes_);
  next_ += n * pixelBytes_;
  copy_.upTo(next_);
}

void PackedRows::end() { copy_.finish(next_); }

}  // namespace vistrel::core
