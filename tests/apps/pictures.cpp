#include "tests/apps/pictures.h"

#include <png.h>

#include <cstdio>
#include <stdexcept>

namespace vistrel {

std::string pgm(uint32_t width, uint32_t height, uint32_t maxval,
                const std::function<uint32_t(uint32_t, uint32_t)>& sample,
                const std::string& phase) {
  std::string file = "P5\n" + (phase.empty() ? "" : "# phase " + phase + "\n") +
                     std::to_string(width) + " " + std::to_string(height) + "\n" +
                     std::to_string(maxval) + "\n";
  for (uint32_t y = 0; y < height; ++y) {
    for (uint32_t x = 0; x < width; ++x) {
      if (maxval > 255) file += static_cast<char>(sample(x, y) >> 8);
      file += static_cast<char>(sample(x, y));
    }
  }
  return file;
}

Picture readPng(const std::filesystem::path& path) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) throw std::runtime_error("no " + path.string());
  // Without handlers, libpng prints errors and aborts the test program.
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  if (setjmp(png_jmpbuf(png))) throw std::runtime_error("bad PNG " + path.string());
  png_init_io(png, file);
  png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  Picture picture{png_get_image_width(png, info),
                  png_get_image_height(png, info),
                  png_get_channels(png, info),
                  png_get_bit_depth(png, info),
                  0,
                  {}};
  png_color_8p significant = nullptr;
  if (png_get_sBIT(png, info, &significant))
    picture.significant = picture.channels == 1 ? significant->gray : significant->green;
  png_bytepp rows = png_get_rows(png, info);
  for (uint32_t y = 0; y < picture.height; ++y)
    for (uint32_t i = 0; i < picture.width * picture.channels; ++i)
      picture.samples.push_back(
          picture.bits == 8 ? rows[y][i]
                            : static_cast<uint16_t>(rows[y][2 * i] << 8 | rows[y][2 * i + 1]));
  png_destroy_read_struct(&png, &info, nullptr);
  std::fclose(file);
  return picture;
}

}  // namespace vistrel
