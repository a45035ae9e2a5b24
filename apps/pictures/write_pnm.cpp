#include <cstdio>
#include <vector>

#include "apps/pictures/picture.h"
#include "apps/pictures/pixel_row.h"

namespace vistrel::app {
namespace {

uint32_t maxvalOf(const vistrel_layout& l) { return (1u << l.bits) - 1; }

// 16-bit samples are big-endian.
void writeRows(const Image& image, AtomicFile& file) {
  std::vector<uint8_t> row;
  for (uint32_t y = 0; y < image.layout.height; ++y) {
    row.clear();
    if (image.layout.bits > 8)
      forEachSample<uint16_t>(image, y, [&row](uint16_t sample) {
        row.push_back(static_cast<uint8_t>(sample >> 8));
        row.push_back(static_cast<uint8_t>(sample));
      });
    else
      forEachSample<uint8_t>(image, y, [&row](uint8_t sample) { row.push_back(sample); });
    file.write(row.data(), row.size());
  }
}

}  // namespace

void writePnm(const Image& image, AtomicFile& file) {
  const vistrel_layout& l = image.layout;
  if (l.channels == 4) return writePam(image, file);
  std::fprintf(file.stream(), "P%d\n%u %u\n%u\n", l.channels == 3 ? 6 : 5, l.width, l.height,
               maxvalOf(l));
  writeRows(image, file);
}

void writePam(const Image& image, AtomicFile& file) {
  const vistrel_layout& l = image.layout;
  const char* const type = l.channels == 1 ? "GRAYSCALE" : l.channels == 3 ? "RGB" : "RGB_ALPHA";
  std::fprintf(file.stream(), "P7\nWIDTH %u\nHEIGHT %u\nDEPTH %u\nMAXVAL %u\nTUPLTYPE %s\nENDHDR\n",
               l.width, l.height, l.channels, maxvalOf(l), type);
  writeRows(image, file);
}

}  // namespace vistrel::app
