/* A plain C user: one mono and one flat Bayer frame, with results worked out by hand. */
#include <stdio.h>
#include <string.h>

#include <vistrel/vistrel.h>

static int expect(const char* what, const uint8_t* got, const uint8_t* wanted, size_t size) {
  if (memcmp(got, wanted, size) == 0) return 0;
  printf("%s: wrong pixels\n", what);
  return 1;
}

int main(void) {
  /* 10 bits to 8: the top eight remain. */
  const uint16_t words[4] = {0, 3, 4, 1023};
  const uint8_t reduced[4] = {0, 0, 1, 255};
  /* 2x2 binning: the sum of four, halved, and no more than 255. */
  const uint8_t bytes[8] = {10, 20, 200, 201, 30, 41, 202, 203};
  const uint8_t binned[2] = {50, 255};
  /* A flat mosaic is a flat image. */
  uint8_t flat[16], pixels[48], gray[48];
  int failures = 0;

  memset(flat, 77, sizeof flat);
  memset(gray, 77, sizeof gray);

  ImgLoadDriver();
  failures += ImgInitialize(1, 4, 4) != 1;
  failures +=
      ImgConvert16(1, IMG_FMT_MONO8, 0, 0, 0, 8, 0, 4, 1, 0, 0, 4, 1, words, pixels, 10, 0) != 1;
  failures += expect("reduced", pixels, reduced, sizeof reduced);
  failures += ImgConvert8(1, IMG_FMT_MONO8, 0, 0, 1, 4, 2, 0, 0, 2, 1, bytes, pixels, 8, 0) != 1;
  failures += expect("binned", pixels, binned, sizeof binned);
  failures += ImgConvert8(1, IMG_FMT_BGR24, DM_BILINEAR, BAYER_RGGB, 0, 4, 4, 0, 0, 4, 4, flat,
                          pixels, 8, 0) != 1;
  failures += expect("demosaiced", pixels, gray, sizeof gray);
  ImgUnloadDriver();
  return failures;
}
