#include <bit>
#include <utility>

#include "apps/output/picture.h"

namespace vistrel::app {

void writeRaw(const Image& image, AtomicFile& file) {
  if (image.layout.bits <= 8 || std::endian::native == std::endian::little)
    return file.write(image.pixels.data(), image.pixels.size());
  std::vector<uint8_t> bytes = image.pixels;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
  file.write(bytes.data(), bytes.size());
}

}  // namespace vistrel::app
