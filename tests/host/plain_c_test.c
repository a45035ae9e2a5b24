/* The header in a C89 program, from the layout to the pixels. */
#include <stdio.h>
#include <string.h>

#include "vistrel/vistrel_host.h"

/* Names of libVistrel's headers, which a program may have for itself. */
enum { DM_BILINEAR = 10, BAYER_RGGB = 4, IMG_FMT_MONO8 = 6 };
static int ImgConvert8(void) { return DM_BILINEAR + BAYER_RGGB + IMG_FMT_MONO8; }

int main(void) {
  unsigned char samples[16], pixels[16];
  unsigned char expected[4];
  vistrel_frame frame;
  vistrel_conversion conversion;
  vistrel_layout layout;
  vistrel_image image;
  vistrel_error error;
  uint16_t points[3];

  memset(expected, ImgConvert8(), sizeof expected);
  memset(samples, 10, sizeof samples);
  memset(&frame, 0, sizeof frame);
  frame.samples = samples;
  frame.size = sizeof samples;
  frame.width = frame.height = 4;
  frame.bytes_per_sample = 1;
  frame.bits = 8;
  frame.phase = VISTREL_MONO;
  vistrel_default_conversion(&frame, &conversion);
  conversion.binning = 2;
  memset(&image, 0, sizeof image);
  image.pixels = pixels;
  image.size = sizeof pixels;
  if (vistrel_get_layout(&frame, &conversion, &layout, &error) || layout.bytes != 4 ||
      vistrel_convert(&frame, &conversion, &image, &error) || memcmp(pixels, expected, 4)) {
    printf("status %d: %s\n", (int)error.status, error.text);
    return 1;
  }
  if (vistrel_make_transfer(VISTREL_TRANSFER_LINEAR, 0, points, 3, &error) || points[1] != 32768) {
    printf("status %d: %s\n", (int)error.status, error.text);
    return 1;
  }
  return 0;
}
