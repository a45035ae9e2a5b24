#include <tiffio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "apps/pictures/picture.h"
#include "apps/pictures/pixel_row.h"

namespace vistrel::app {
namespace {

// Larger files need 64-bit offsets.
constexpr size_t kMaxClassicBytes = 0xF0000000;

struct Message {
  char text[160];
};

int keepText(TIFF*, void* to, const char*, const char* format, va_list arguments) {
  auto* message = static_cast<Message*>(to);
  if (!message->text[0]) std::vsnprintf(message->text, sizeof message->text, format, arguments);
  return 1;
}

int dropText(TIFF*, void*, const char*, const char*, va_list) { return 1; }

using Tiff = std::unique_ptr<TIFF, void (*)(TIFF*)>;

Tiff openTiff(const AtomicFile& file, Message& message, bool large) {
  const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(),
                                                                             TIFFOpenOptionsFree);
  if (!options) throw std::bad_alloc();
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keepText, &message);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), dropText, nullptr);
  // TIFFClose() closes the descriptor, so it gets a duplicate.
  return {TIFFFdOpenExt(dup(fileno(file.stream())), "TIFF", large ? "w8" : "w", options.get()),
          TIFFClose};
}

void describe(TIFF* tiff, const vistrel_layout& l) {
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, l.width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, l.height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, l.bits > 8 ? 16 : 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, l.channels);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC,
               l.channels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
  const uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
  if (l.channels == 4) TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
}

// Scales a sample to 16 bits by repeating its bits below, so that white stays white.
uint16_t scaled(uint32_t sample, uint32_t bits) {
  return static_cast<uint16_t>(sample << (16 - bits) | sample >> (2 * bits - 16));
}

template <class Sample>
bool writeRows(TIFF* tiff, const Image& image) {
  const vistrel_layout& l = image.layout;
  std::vector<Sample> row;
  for (uint32_t y = 0; y < l.height; ++y) {
    row.clear();
    forEachSample<Sample>(image, y, [&](Sample sample) {
      row.push_back(sizeof sample == 1 ? sample : static_cast<Sample>(scaled(sample, l.bits)));
    });
    if (TIFFWriteScanline(tiff, row.data(), y, 0) != 1) return false;
  }
  return TIFFFlush(tiff) == 1;
}

}  // namespace

void writeTiff(const Image& image, AtomicFile& file) {
  Message message{};
  errno = 0;
  const Tiff tiff = openTiff(file, message, image.layout.bytes > kMaxClassicBytes);
  if (tiff) {
    describe(tiff.get(), image.layout);
    const bool wide = image.layout.bits > 8;
    errno = 0;
    if (wide ? writeRows<uint16_t>(tiff.get(), image) : writeRows<uint8_t>(tiff.get(), image))
      return;
  }
  file.throwWriteError(errno ? std::strerror(errno) : message.text);
}

}  // namespace vistrel::app
