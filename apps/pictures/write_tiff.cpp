#include <cstdint>
#include <vector>

#include "apps/pictures/picture.h"
#include "apps/pictures/pixel_row.h"
#include "apps/pictures/tiff_output.h"

namespace vistrel::app {
namespace {

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
void writeRows(TiffOutput& tiff, const Image& image) {
  const vistrel_layout& l = image.layout;
  std::vector<Sample> row;
  for (uint32_t y = 0; y < l.height; ++y) {
    row.clear();
    forEachSample<Sample>(image, y, [&](Sample sample) {
      row.push_back(sizeof sample == 1 ? sample : static_cast<Sample>(scaled(sample, l.bits)));
    });
    tiff.writeRow(row.data(), y);
  }
  tiff.finish();
}

}  // namespace

void writeTiff(const Image& image, AtomicFile& file) {
  TiffOutput tiff(file, image.layout.bytes > kMaxClassicBytes ? "w8" : "w");
  describe(tiff.handle(), image.layout);
  image.layout.bits > 8 ? writeRows<uint16_t>(tiff, image) : writeRows<uint8_t>(tiff, image);
}

}  // namespace vistrel::app
