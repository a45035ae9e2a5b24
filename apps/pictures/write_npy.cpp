#include <cstring>
#include <string>

#include "apps/error.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/picture_rows.h"

namespace vistrel::app {
namespace {

// Version 1.0 of the format: the samples begin at a multiple of 64 bytes.
std::string headerOf(const vistrel_layout& l) {
  constexpr size_t kPrefix = 10, kAlignment = 64;
  std::string text = fmt::format("{{'descr': '{}', 'fortran_order': False, 'shape': ({}, {}{}), }}",
                                 l.bits > 8 ? "<u2" : "|u1", l.height, l.width,
                                 l.channels > 1 ? fmt::format(", {}", l.channels) : "");
  while ((kPrefix + text.size() + 1) % kAlignment) text += ' ';
  text += '\n';
  const std::string size{static_cast<char>(text.size()), static_cast<char>(text.size() >> 8)};
  return std::string("\x93NUMPY\1\0", 8) + size + text;
}

}  // namespace

void writeNpy(const Image& image, const PictureDetails&, AtomicFile& file) {
  const std::string header = headerOf(image.layout);
  file.write(header.data(), header.size());
  PictureRows rows(image, Depth::kKept, std::endian::little);
  for (uint32_t y = 0; y < rows.count(); ++y) file.write(rows.row(y), rows.bytes());
}

}  // namespace vistrel::app
