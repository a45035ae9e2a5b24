// Reading PNG through libpng, with exceptions in place of jumps.
#pragma once

#include <png.h>

#include <string>

#include "apps/files/source.h"
#include "apps/pictures/png_errors.h"

namespace vistrel::app {

class PngInput {
 public:
  // Reads everything before the pixels. Throws ProgramError.
  explicit PngInput(const Source& source);
  ~PngInput();
  PngInput(const PngInput&) = delete;
  PngInput& operator=(const PngInput&) = delete;

  uint32_t width() const { return png_get_image_width(png_, info_); }
  uint32_t height() const { return png_get_image_height(png_, info_); }
  uint32_t bits() const { return png_get_bit_depth(png_, info_); }
  uint32_t channels() const { return png_get_channels(png_, info_); }
  int colourType() const { return png_get_color_type(png_, info_); }

  // Significant bits of a gray sample; all bits if the file doesn't specify them, or says fewer
  // than 8.
  uint32_t grayBits() const;

  // The text of that keyword; empty if there is none.
  std::string text(const char* keyword) const;

  // Decodes all rows, from the top: blue, green, red; 16-bit samples in native byte order, shifted
  // down to the significant bits. May be called once. Throws ProgramError.
  void readRows(uint8_t* to, size_t rowBytes);

 private:
  bool readHeader();
  bool decode(uint8_t* to, size_t rowBytes);
  static void onRead(png_structp png, png_bytep to, size_t count);

  const Source& source_;
  uint64_t at_ = 0;
  PngMessage message_{};
  png_structp png_;
  png_infop info_;
};

// Deflate decodes one byte to at most this many.
constexpr uint64_t kDeflateRatio = 1032;

}  // namespace vistrel::app
