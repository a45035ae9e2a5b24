#include <algorithm>
#include <bit>
#include <utility>

#include "apps/error.h"
#include "apps/pictures/pgm_header.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/png_input.h"

namespace vistrel::app {
namespace {

// Swaps red and blue. Throws ProgramError if a sample is above `largest`.
template <class Sample>
void finish(uint8_t* pixels, size_t count, uint32_t largest) {
  auto* const samples = reinterpret_cast<Sample*>(pixels);
  if (*std::max_element(samples, samples + 3 * count) > largest)
    throwError(kRejected, "a sample is above the maxval of {}", largest);
  for (size_t i = 0; i < count; ++i) std::swap(samples[3 * i], samples[3 * i + 2]);
}

ColourPicture readPpm(const Source& source) {
  const PgmHeader h = readPpmHeader(source);
  const uint32_t bits = h.maxval > 255 ? 16 : 8;
  const uint64_t rowBytes = uint64_t{h.width} * 3 * bits / 8;
  if (rowBytes > (source.size() - h.samplesAt) / h.height)
    throwError(kRejected, "the file is too short: {}x{} pixels do not fit its {} bytes", h.width,
               h.height, source.size());
  ColourPicture picture{{{h.width, h.height, 3, bits, rowBytes, rowBytes * h.height, 0, 0, {}}, {}},
                        h.maxval};
  auto& pixels = picture.image.pixels;
  pixels.resize(picture.image.layout.bytes);
  source.read(h.samplesAt, pixels.data(), pixels.size());
  const size_t count = size_t{h.width} * h.height;
  if (bits == 16 && std::endian::native == std::endian::little) swapBytes(pixels.data(), 3 * count);
  bits == 16 ? finish<uint16_t>(pixels.data(), count, h.maxval)
             : finish<uint8_t>(pixels.data(), count, h.maxval);
  return picture;
}

}  // namespace

Image readPng(const std::filesystem::path& path, uint32_t maxBits) {
  const Source source(path);
  PngInput png(source);
  if (png.colourType() != PNG_COLOR_TYPE_RGB || png.bits() > maxBits)
    throwError(kRejected,
               "a PNG of {} channels of {} bits: three of 8{}, red, green and blue, are expected",
               png.channels(), png.bits(), maxBits > 8 ? " or 16" : "");
  const size_t rowBytes = size_t{png.width()} * 3 * png.bits() / 8;
  if (rowBytes * png.height() / kDeflateRatio > source.size())
    throwError(kRejected, "the file is too short: {}x{} pixels do not fit its {} bytes",
               png.width(), png.height(), source.size());
  Image image;
  image.layout = {png.width(), png.height(), 3, png.bits(), rowBytes, rowBytes * png.height(), 0, 0,
                  {}};
  image.pixels.resize(image.layout.bytes);
  png.readRows(image.pixels.data(), rowBytes);
  return image;
}

bool isOwnPicture(const std::filesystem::path& path) {
  bool isOwn = false;
  attempt([&] {
    const Source source(path);
    if (source.head(4) != "\x89PNG") return;
    const PngInput png(source);
    isOwn = png.text("Software").starts_with("vistrel ") && png.text("Phase").empty();
  });
  return isOwn;
}

ColourPicture readColourPicture(const std::filesystem::path& path) {
  const Source source(path);
  if (source.head(2) == "P6") return readPpm(source);
  if (source.head(4) != "\x89PNG") throwError(kRejected, "it is neither a PPM nor a PNG");
  Image image = readPng(path, 16);
  const uint32_t largest = (1u << image.layout.bits) - 1;
  return {std::move(image), largest};
}

}  // namespace vistrel::app
