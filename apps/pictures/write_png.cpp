#include <png.h>

#include <bit>
#include <cerrno>
#include <csetjmp>
#include <cstring>
#include <new>

#include "apps/pictures/picture.h"
#include "apps/pictures/png_errors.h"

namespace vistrel::app {
namespace {

// libpng's default limit of a million columns and rows is meant for untrusted input.
constexpr png_uint_32 kMaxPixels = 0x7FFFFFFF;
constexpr int kFastCompression = 3;

struct Writer {
  explicit Writer(PngMessage& message)
      : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, &message, onPngError, onPngWarning)),
        info(png ? png_create_info_struct(png) : nullptr) {
    if (!info) throw std::bad_alloc();
  }
  ~Writer() { png_destroy_write_struct(&png, &info); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  png_structp png;
  png_infop info;
};

void describe(png_structp png, png_infop info, const vistrel_layout& l) {
  png_set_user_limits(png, kMaxPixels, kMaxPixels);
  png_set_compression_level(png, kFastCompression);
  png_set_IHDR(png, info, l.width, l.height, l.bits > 8 ? 16 : 8,
               l.channels == 1   ? PNG_COLOR_TYPE_GRAY
               : l.channels == 3 ? PNG_COLOR_TYPE_RGB
                                 : PNG_COLOR_TYPE_RGB_ALPHA,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  const auto bits = static_cast<png_byte>(l.bits);
  const png_color_8 significant{bits, bits, bits, bits, 0};
  const bool scale = l.bits > 8 && l.bits < 16;
  if (scale) png_set_sBIT(png, info, &significant);
  png_write_info(png, info);
  if (scale) png_set_shift(png, &significant);
  if (l.channels == 3) png_set_bgr(png);
  if (l.channels == 4) png_set_swap_alpha(png);
  if (l.bits > 8 && std::endian::native == std::endian::little) png_set_swap(png);
}

// Returns false after an error. Errors jump, so nothing in here may have a destructor.
bool encode(png_structp png, png_infop info, const Image& image, std::FILE* to) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_init_io(png, to);
  describe(png, info, image.layout);
  for (uint32_t y = 0; y < image.layout.height; ++y)
    png_write_row(png, image.pixels.data() + y * image.layout.row_bytes);
  png_write_end(png, nullptr);
  return true;
}

}  // namespace

void writePng(const Image& image, AtomicFile& file) {
  PngMessage message{};
  const Writer writer(message);
  if (!encode(writer.png, writer.info, image, file.stream()))
    file.throwWriteError(std::ferror(file.stream()) ? std::strerror(errno) : message.text);
}

}  // namespace vistrel::app
