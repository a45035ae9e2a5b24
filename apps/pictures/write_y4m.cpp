#include <cstdio>
#include <vector>

#include "apps/pictures/picture.h"

namespace vistrel::app {
namespace {

// A name of the format's colour spaces. In 4:2:0 chroma lies in the middle of four pixels.
const char* colourSpaceOf(const vistrel_layout& l) {
  if (l.channels == 1) return "mono";
  return l.bytes == 3 * l.row_bytes * l.height ? "444" : "420jpeg";
}

// The luma of gray, 0 to 255, in limited range: that of a colour image's gray pixels.
uint8_t limitedLuma(uint8_t gray) { return static_cast<uint8_t>(17 * (207 * gray + 3966) >> 12); }

}  // namespace

void beginY4m(const vistrel_layout& l, const FrameRate& rate, AtomicFile& file) {
  std::fprintf(file.stream(), "YUV4MPEG2 W%u H%u F%u:%u Ip A1:1 C%s XCOLORRANGE=LIMITED\n", l.width,
               l.height, rate.frames, rate.seconds, colourSpaceOf(l));
}

void writeY4m(const Image& image, const PictureDetails&, AtomicFile& file) {
  std::fputs("FRAME\n", file.stream());
  if (image.layout.channels > 1) return file.write(image.pixels.data(), image.pixels.size());
  std::vector<uint8_t> luma;
  luma.reserve(image.pixels.size());
  for (const uint8_t gray : image.pixels) luma.push_back(limitedLuma(gray));
  file.write(luma.data(), luma.size());
}

}  // namespace vistrel::app
