#include "apps/tools/guess/row_reader.h"

#include <algorithm>

#include "apps/names/pixel_format.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

std::vector<Packing> allPackings() {
  std::vector<Packing> all;
  for (const PixelFormat& f : pixelFormats())
    if (f.phase == VISTREL_MONO && (f.bits == 16 || !are16Bit(f.packing))) {
      const SampleGroup group = groupOf(f.packing, f.bits);
      all.push_back({f.packing, f.bits, 8 * group.bytes / group.pixels});
    }
  return all;
}

size_t rowBytesOf(const Packing& packing, size_t width) { return (width * packing.stored + 7) / 8; }

uint32_t widthOf(const Packing& packing, size_t rowBytes) {
  return static_cast<uint32_t>(rowBytes * 8 / packing.stored);
}

double bytesPerRow(const Layout& layout) {
  return layout.stride ? static_cast<double>(layout.stride)
                       : layout.width * layout.packing.stored / 8.0;
}

RowReader::RowReader(const std::vector<uint8_t>& bytes, const Layout& layout)
    : bytes_(bytes), layout_(layout) {
  const size_t row = rowBytesOf(layout.packing, layout.width);
  if (bytes.size() < layout.skip + row) return;
  const size_t left = bytes.size() - layout.skip;
  rows_ = layout.stride ? (left - row) / layout.stride + 1
                        : left * 8 / layout.packing.stored / layout.width;
  span_ = static_cast<double>(left) / bytesPerRow(layout);
}

void RowReader::read(size_t y, uint32_t first, uint32_t count, uint16_t* to) {
  const Packing& p = layout_.packing;
  const size_t pixel = layout_.stride ? first : y * layout_.width + first;
  const size_t before = pixel % 8;  // eight samples fill whole bytes
  const size_t at = layout_.skip + y * layout_.stride + (pixel - before) / 8 * p.stored;
  const size_t end = layout_.stride ? layout_.width : rows_ * layout_.width;  // of the whole groups
  const auto samples =
      static_cast<uint32_t>(std::min((before + count + 7) & ~size_t{7}, end - (pixel - before)));
  if (p.code == VISTREL_PACKING_BYTES) {
    std::copy_n(bytes_.begin() + static_cast<ptrdiff_t>(at + before), count, to);
    return;
  }
  unpacked_.resize(samples);
  unpackInto(packedOf({bytes_.data() + at, bytes_.size() - at}, samples, 1, p.code, p.bits),
             {reinterpret_cast<uint8_t*>(unpacked_.data()), unpacked_.size() * 2});
  std::copy_n(unpacked_.begin() + static_cast<ptrdiff_t>(before), count, to);
}

}  // namespace vistrel::app
