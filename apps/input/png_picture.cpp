#include "apps/failure.h"
#include "apps/input/png_input.h"
#include "apps/output/picture.h"

namespace vistrel::app {

Image readPng(const std::filesystem::path& path) {
  const Source source(path);
  PngInput png(source);
  if (png.colourType() != PNG_COLOR_TYPE_RGB || png.bits() != 8)
    fail(kRejected,
         "a PNG of {} channels of {} bits: three of 8, red, green and blue, are expected",
         png.channels(), png.bits());
  const size_t rowBytes = size_t{png.width()} * 3;
  if (rowBytes * png.height() / kDeflateRatio > source.size())
    fail(kRejected, "the file is too short: {}x{} pixels do not fit its {} bytes", png.width(),
         png.height(), source.size());
  Image image;
  image.layout = {png.width(), png.height(), 3, 8, rowBytes, rowBytes * png.height(), 0, 0, {}};
  image.pixels.resize(image.layout.bytes);
  png.readRows(image.pixels.data(), rowBytes);
  return image;
}

}  // namespace vistrel::app
