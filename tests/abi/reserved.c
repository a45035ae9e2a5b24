// Built against this version's headers and against those in which reserved fields have names, runs
// with the libraries of both. Argument "next": the library is the next version.
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "vistrel/vistrel_host.h"

enum { kWidth = 34, kHeight = 26 };

static void expect(int holds, const char* what) {
  if (holds) return;
  fprintf(stderr, "%s\n", what);
  exit(1);
}

// One conversion with every structure that a caller fills or reads.
static int32_t convert(const vistrel_conversion* conversion, vistrel_error* error) {
  static uint16_t samples[kWidth * kHeight];
  static uint8_t pixels[kWidth * kHeight * 4];
  vistrel_frame frame;
  vistrel_layout layout;
  vistrel_image image;
  memset(&frame, 0, sizeof frame);
  memset(&image, 0, sizeof image);
  memset(&layout, 0xA5, sizeof layout);
  for (int i = 0; i < kWidth * kHeight; ++i) samples[i] = (uint16_t)(i * 37 % 4096);
  frame.samples = samples;
  frame.size = sizeof samples;
  frame.width = kWidth;
  frame.height = kHeight;
  frame.bytes_per_sample = 2;
  frame.bits = 12;
  frame.phase = VISTREL_RGGB;
  image.pixels = pixels;
  image.size = sizeof pixels;
  const int32_t status = vistrel_get_layout(&frame, conversion, &layout, error);
  if (status) return status;
  expect(layout.width == kWidth && layout.bytes == kWidth * kHeight * 3, "the layout differs");
  for (size_t i = 0; i < sizeof layout.reserved / sizeof *layout.reserved; ++i)
    expect(layout.reserved[i] == 0, "a reserved field of the layout is not 0");
  return vistrel_convert(&frame, conversion, &image, error);
}

int main(int argc, char** argv) {
  vistrel_conversion conversion;
  vistrel_error error;
  memset(&conversion, 0xA5, sizeof conversion);
  vistrel_default_conversion(NULL, &conversion);
  expect(convert(&conversion, &error) == VISTREL_OK, "a plain conversion is rejected");
#ifdef VISTREL_NEXT
  conversion.named = 1;
  const int isNext = argc > 1 && !strcmp(argv[1], "next");
  const int32_t wanted = isNext ? VISTREL_OK : VISTREL_BAD_RESERVED;
  expect(convert(&conversion, &error) == wanted, "a field of the next version has no effect");
  conversion.named = 0;
#else
  (void)argc, (void)argv;
#endif
  conversion.reserved[sizeof conversion.reserved / sizeof *conversion.reserved - 1] = 1;
  expect(convert(&conversion, &error) == VISTREL_BAD_RESERVED, "a reserved field is not checked");
  expect(!strncmp(error.argument, "conversion.reserved", 19), "another argument is blamed");
  return 0;
}
