/* The library itself, which checks nothing: a red wall under RGGB filters. */
#include <stdint.h>
#include <stdio.h>
#include <vistrel/vistrel.h>

int main(void) {
  enum { width = 6, height = 4, stream = 1 };
  uint8_t frame[height][width], image[height][width][3];
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) frame[y][x] = y % 2 == 0 && x % 2 == 0 ? 200 : 40;

  ImgLoadDriver();
  if (!ImgInitialize(stream, width, height)) return 1;
  ImgConvert8(stream, IMG_FMT_BGR24, DM_BILINEAR, BAYER_RGGB, 0, width, height, 0, 0, width, height,
              frame[0], image, 8, 0);
  ImgUnloadDriver();

  printf("blue %d, green %d, red %d\n", image[1][2][0], image[1][2][1], image[1][2][2]);
  return 0;
}
