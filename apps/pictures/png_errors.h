// Error handlers for libpng: keep the message and jump back.
#pragma once

#include <png.h>

#include <cstring>

namespace vistrel::app {

struct PngMessage {
  char text[160];
};

inline void onPngError(png_structp png, png_const_charp text) {
  auto* message = static_cast<PngMessage*>(png_get_error_ptr(png));
  std::strncpy(message->text, text, sizeof message->text - 1);
  png_longjmp(png, 1);
}

inline void onPngWarning(png_structp, png_const_charp) {}

}  // namespace vistrel::app
