#include <png.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "apps/failure.h"
#include "apps/input/frame_file.h"
#include "apps/output/picture.h"
#include "apps/output/png_errors.h"

namespace vistrel::app {
namespace {

struct Reader {
  explicit Reader(PngMessage& message)
      : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, &message, onPngError, onPngWarning)),
        info(png ? png_create_info_struct(png) : nullptr) {
    if (!info) throw std::bad_alloc();
  }
  ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  png_structp png;
  png_infop info;
};

// False after an error. Nothing in here has a destructor: errors jump.
bool readHeader(png_structp png, png_infop info, std::FILE* from) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_init_io(png, from);
  png_read_info(png, info);
  return true;
}

bool readRows(png_structp png, uint8_t* pixels, size_t rowBytes, uint32_t height) {
  if (setjmp(png_jmpbuf(png))) return false;
  const int passes = png_set_interlace_handling(png);
  png_set_bgr(png);
  for (int pass = 0; pass < passes; ++pass)
    for (uint32_t y = 0; y < height; ++y) png_read_row(png, pixels + y * rowBytes, nullptr);
  png_read_end(png, nullptr);
  return true;
}

void checkType(png_structp png, png_infop info) {
  const int depth = png_get_bit_depth(png, info);
  if (png_get_color_type(png, info) != PNG_COLOR_TYPE_RGB || depth != 8)
    fail(kRejected,
         "a PNG of {} channels of {} bits: three of 8, red, green and blue, are expected",
         png_get_channels(png, info), depth);
}

// Before its pixels take memory: deflate makes at most 1032 bytes of one.
void checkLength(const std::filesystem::path& path, uint32_t width, uint32_t height) {
  constexpr uint64_t kMostRatio = 1032;
  const uint64_t size = std::filesystem::file_size(path);
  if (uint64_t{width} * 3 * height / kMostRatio > size)
    fail(kRejected, "the file is too short: {}x{} pixels do not fit its {} bytes", width, height,
         size);
}

}  // namespace

Image readPng(const std::filesystem::path& path) {
  checkIsFile(path);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
  if (!file) fail(kInputOutput, "cannot be read: {}", std::strerror(errno));
  PngMessage message{};
  const Reader reader(message);
  if (!readHeader(reader.png, reader.info, file.get())) fail(kRejected, "{}", message.text);
  checkType(reader.png, reader.info);
  const uint32_t width = png_get_image_width(reader.png, reader.info);
  const uint32_t height = png_get_image_height(reader.png, reader.info);
  checkLength(path, width, height);
  const size_t rowBytes = size_t{width} * 3;
  Image image{{width, height, 3, 8, rowBytes, rowBytes * height}, {}};
  image.pixels.resize(image.layout.bytes);
  if (!readRows(reader.png, image.pixels.data(), rowBytes, height))
    fail(kRejected, "{}", message.text);
  return image;
}

}  // namespace vistrel::app
