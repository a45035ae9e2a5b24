#include <cstdio>

#include "apps/pictures/picture.h"
#include "apps/pictures/picture_rows.h"

namespace vistrel::app {
namespace {

uint32_t maxvalOf(const vistrel_layout& l) { return (1u << l.bits) - 1; }

void writeRows(const Image& image, AtomicFile& file) {
  PictureRows rows(image, Depth::kKept, std::endian::big);
  for (uint32_t y = 0; y < rows.count(); ++y) file.write(rows.row(y), rows.bytes());
}

}  // namespace

void writePnm(const Image& image, const PictureDetails& details, AtomicFile& file) {
  const vistrel_layout& l = image.layout;
  if (l.channels == 4) return writePam(image, details, file);
  std::fprintf(file.stream(), "P%d\n", l.channels == 3 ? 6 : 5);
  if (details.camera)
    std::fprintf(file.stream(), "# phase %s\n", vistrel_phase_name(details.camera->phase));
  std::fprintf(file.stream(), "%u %u\n%u\n", l.width, l.height, maxvalOf(l));
  writeRows(image, file);
}

void writePam(const Image& image, const PictureDetails&, AtomicFile& file) {
  const vistrel_layout& l = image.layout;
  const char* const type = l.channels == 1 ? "GRAYSCALE" : l.channels == 3 ? "RGB" : "RGB_ALPHA";
  std::fprintf(file.stream(), "P7\nWIDTH %u\nHEIGHT %u\nDEPTH %u\nMAXVAL %u\nTUPLTYPE %s\nENDHDR\n",
               l.width, l.height, l.channels, maxvalOf(l), type);
  writeRows(image, file);
}

}  // namespace vistrel::app
