#include "apps/failure.h"
#include "apps/input/png_input.h"
#include "apps/output/picture.h"

namespace vistrel::app {

Image readPng(const std::filesystem::path& path, uint32_t mostBits) {
  const Source source(path);
  PngInput png(source);
  if (png.colourType() != PNG_COLOR_TYPE_RGB || png.bits() > mostBits)
    fail(kRejected,
         "a PNG of {} channels of {} bits: three of 8{}, red, green and blue, are expected",
         png.channels(), png.bits(), mostBits > 8 ? " or 16" : "");
  const size_t rowBytes = size_t{png.width()} * 3 * png.bits() / 8;
  if (rowBytes * png.height() / kDeflateRatio > source.size())
    fail(kRejected, "the file is too short: {}x{} pixels do not fit its {} bytes", png.width(),
         png.height(), source.size());
  Image image;
  image.layout = {png.width(), png.height(), 3, png.bits(), rowBytes, rowBytes * png.height(), 0, 0,
                  {}};
  image.pixels.resize(image.layout.bytes);
  png.readRows(image.pixels.data(), rowBytes);
  return image;
}

}  // namespace vistrel::app
