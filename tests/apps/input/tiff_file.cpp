#include "tests/apps/input/tiff_file.h"

#include <tiffio.h>

#include <stdexcept>

namespace vistrel {
namespace {

// Most significant bit first, rows begin at byte boundaries; 16-bit samples in native byte order.
std::vector<uint8_t> packedRow(const TiffSpec& s, uint32_t x0, uint32_t width, uint32_t y,
                               const Sample& sample) {
  std::vector<uint8_t> row;
  uint32_t held = 0, count = 0;
  for (uint32_t x = x0; x < x0 + width; ++x) {
    const uint32_t value = x < s.width ? sample(x, y) : 0;
    if (s.bits == 16) {
      row.push_back(static_cast<uint8_t>(value));
      row.push_back(static_cast<uint8_t>(value >> 8));
      continue;
    }
    for (uint32_t bit = s.bits; bit-- > 0;) {
      held = held << 1 | (value >> bit & 1);
      if (++count % 8 == 0) row.push_back(static_cast<uint8_t>(held));
    }
  }
  if (count % 8) row.push_back(static_cast<uint8_t>(held << (8 - count % 8)));
  return row;
}

void setTags(TIFF* t, const TiffSpec& s) {
  TIFFSetField(t, TIFFTAG_SUBFILETYPE, s.isReduced ? FILETYPE_REDUCEDIMAGE : 0);
  TIFFSetField(t, TIFFTAG_IMAGEWIDTH, s.width);
  TIFFSetField(t, TIFFTAG_IMAGELENGTH, s.height);
  TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, s.bits);
  TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, s.samplesPerPixel);
  TIFFSetField(t, TIFFTAG_SAMPLEFORMAT, s.sampleFormat);
  TIFFSetField(t, TIFFTAG_COMPRESSION, s.compression);
  TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(t, TIFFTAG_PHOTOMETRIC,
               s.samplesPerPixel == 3 ? PHOTOMETRIC_RGB
               : s.isInverse          ? PHOTOMETRIC_MINISWHITE
               : s.cfa.empty()        ? PHOTOMETRIC_MINISBLACK
                                      : PHOTOMETRIC_CFA);
  if (s.tile) {
    TIFFSetField(t, TIFFTAG_TILEWIDTH, s.tile);
    TIFFSetField(t, TIFFTAG_TILELENGTH, s.tile);
  } else {
    TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, s.rowsPerStrip);
  }
}

void setAll(TIFF* t, const TiffTags& tags) {
  for (const auto& [tag, values] : tags.rationals)
    TIFFSetField(t, tag, static_cast<int>(values.size()), values.data());
  for (const auto& [tag, values] : tags.pairs) TIFFSetField(t, tag, values.data());
  for (const auto& [tag, value] : tags.numbers) TIFFSetField(t, tag, value);
  for (const auto& [tag, code] : tags.codes) TIFFSetField(t, tag, code);
  for (const auto& [tag, text] : tags.texts) TIFFSetField(t, tag, text);
}

void setRawTags(TIFF* t, const TiffSpec& s) {
  const uint16_t repeat[2] = {2, 2};
  if (!s.cfa.empty()) {
    TIFFSetField(t, TIFFTAG_CFAREPEATPATTERNDIM, repeat);
    TIFFSetField(t, TIFFTAG_CFAPATTERN, static_cast<int>(s.cfa.size()), s.cfa.data());
  }
  if (!s.activeArea.empty()) TIFFSetField(t, TIFFTAG_ACTIVEAREA, s.activeArea.data());
  if (s.white) TIFFSetField(t, TIFFTAG_WHITELEVEL, 1, &s.white);
  if (s.black >= 0) TIFFSetField(t, TIFFTAG_BLACKLEVEL, 1, &s.black);
  if (s.blackSize[0]) TIFFSetField(t, TIFFTAG_BLACKLEVELREPEATDIM, s.blackSize.data());
  setAll(t, s.frame);
  if (!s.linearization.empty())
    TIFFSetField(t, TIFFTAG_LINEARIZATIONTABLE, static_cast<int>(s.linearization.size()),
                 s.linearization.data());
}

void writeSamples(TIFF* t, const TiffSpec& s, const Sample& sample) {
  const uint32_t wide = s.tile ? s.tile : s.width * s.samplesPerPixel;
  const uint32_t high = s.tile ? s.tile : s.rowsPerStrip;
  uint32_t index = 0;
  for (uint32_t y0 = 0; y0 < s.height; y0 += high)
    for (uint32_t x0 = 0; x0 < s.width; x0 += wide) {
      std::vector<uint8_t> block;
      for (uint32_t y = y0; y < y0 + high && (s.tile || y < s.height); ++y) {
        const auto row = packedRow(s, x0, wide, y, sample);
        block.insert(block.end(), row.begin(), row.end());
      }
      const auto bytes = static_cast<tmsize_t>(block.size());
      s.tile ? TIFFWriteEncodedTile(t, index++, block.data(), bytes)
             : TIFFWriteEncodedStrip(t, index++, block.data(), bytes);
    }
}

void writeImage(TIFF* t, const TiffSpec& s, const Sample& sample) {
  setTags(t, s);
  setRawTags(t, s);
  std::string strip = s.encoded;
  if (strip.empty())
    writeSamples(t, s, sample);
  else
    TIFFWriteRawStrip(t, 0, strip.data(), static_cast<tmsize_t>(strip.size()));
  TIFFWriteDirectory(t);
}

// Writes the EXIF directory, and points to it from the first of a file with a single directory.
void writeExif(TIFF* t, const TiffSpec& s) {
  uint64_t offset = 0;
  TIFFCreateEXIFDirectory(t);
  setAll(t, s.exif);
  if (!s.isoSpeeds.empty())
    TIFFSetField(t, EXIFTAG_ISOSPEEDRATINGS, static_cast<int>(s.isoSpeeds.size()),
                 s.isoSpeeds.data());
  TIFFWriteCustomDirectory(t, &offset);
  TIFFSetDirectory(t, 0);
  TIFFSetField(t, TIFFTAG_EXIFIFD, offset);
  TIFFRewriteDirectory(t);
}

bool isEmpty(const TiffTags& t) {
  return t.rationals.empty() && t.pairs.empty() && t.numbers.empty() && t.codes.empty() &&
         t.texts.empty();
}

// The first directory of a camera raw file: a thumbnail.
void writeThumbnail(TIFF* t) {
  TiffSpec s;
  s.width = s.height = 2;
  s.bits = 8;
  s.samplesPerPixel = 3;
  s.isReduced = true;
  setTags(t, s);
  const uint64_t below = 0;
  TIFFSetField(t, TIFFTAG_SUBIFD, 1, &below);
  uint8_t pixels[12] = {};
  TIFFWriteEncodedStrip(t, 0, pixels, sizeof pixels);
  TIFFWriteDirectory(t);
}

}  // namespace

void writeTiff(const std::filesystem::path& path, const TiffSpec& s, const Sample& sample) {
  TIFF* t = TIFFOpen(path.c_str(), s.mode);
  if (!t) throw std::runtime_error("no " + path.string());
  const uint8_t version[4] = {1, 4, 0, 0};
  if (s.isDng) TIFFSetField(t, TIFFTAG_DNGVERSION, version);
  if (s.orientation) TIFFSetField(t, TIFFTAG_ORIENTATION, s.orientation);
  setAll(t, s.camera);
  if (s.inSubdirectory) writeThumbnail(t);
  for (uint32_t page = 0; page < s.pages; ++page)
    writeImage(t, s, [&](uint32_t x, uint32_t y) { return sample(x, y + page * s.height); });
  if (!isEmpty(s.exif)) writeExif(t, s);
  TIFFClose(t);
}

}  // namespace vistrel
