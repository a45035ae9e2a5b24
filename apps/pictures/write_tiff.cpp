#include "apps/pictures/picture.h"
#include "apps/pictures/picture_rows.h"
#include "apps/pictures/tiff_output.h"

namespace vistrel::app {
namespace {

void describeColours(TIFF* t, const vistrel_layout& l) {
  TIFFSetField(t, TIFFTAG_PHOTOMETRIC, l.channels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
  TIFFSetField(t, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  const uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
  if (l.channels == 4) TIFFSetField(t, TIFFTAG_EXTRASAMPLES, 1, &alpha);
}

// None unless it is asked for.
void describeCompression(TIFF* t, const Compression& c) {
  const int level = c.level.value_or(0);
  TIFFSetField(t, TIFFTAG_COMPRESSION,
               c.lzw       ? COMPRESSION_LZW
               : level > 0 ? COMPRESSION_ADOBE_DEFLATE
                           : COMPRESSION_NONE);
  if (c.lzw || level > 0) TIFFSetField(t, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  if (level > 0) TIFFSetField(t, TIFFTAG_ZIPQUALITY, level);
}

}  // namespace

void writeTiff(const Image& image, const PictureDetails& details, AtomicFile& file) {
  TiffOutput tiff(file, image.layout.bytes > kMaxClassicBytes ? "w8" : "w");
  tiff.describe(image.layout, details);
  describeColours(tiff.handle(), image.layout);
  describeCompression(tiff.handle(), details.compression);
  PictureRows rows(image, Depth::kScaled, std::endian::native);
  for (uint32_t y = 0; y < rows.count(); ++y) tiff.writeRow(rows.row(y), y);
  tiff.finish();
}

}  // namespace vistrel::app
