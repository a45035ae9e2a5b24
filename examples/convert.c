/* convert FRAME.pgm PHASE BITS PICTURE.ppm: a frame of 16-bit words in a binary PGM to a picture.
 */
#include <stdio.h>
#include <stdlib.h>
#include <vistrel/vistrel_host.h>

static int refuse(const char* text) {
  fprintf(stderr, "%s\n", text);
  return 1;
}

static int convert(FILE* in, const char* phase, unsigned bits, FILE* out) {
  vistrel_packed dump = {0};
  vistrel_packed_layout unpacked;
  vistrel_frame frame = {0};
  vistrel_conversion conversion;
  vistrel_layout layout;
  vistrel_image image = {0};
  vistrel_error error;
  static unsigned char bytes[1 << 24], samples[1 << 24], pixels[1 << 24];

  if (fscanf(in, "P5 %u %u %*u", &dump.width, &dump.height) != 2) return refuse("not a PGM");
  fgetc(in);
  dump.bytes = bytes;
  dump.size = fread(bytes, 1, sizeof bytes, in);
  dump.packing = VISTREL_PACKING_BIG;
  dump.bits = bits;
  if (vistrel_get_packed_layout(&dump, &unpacked, &error) ||
      vistrel_unpack(&dump, samples, sizeof samples, &error))
    return refuse(error.text);

  frame.samples = samples;
  frame.size = unpacked.unpacked_bytes;
  frame.width = dump.width;
  frame.height = dump.height;
  frame.bytes_per_sample = unpacked.bytes_per_sample;
  frame.bits = bits;
  if (vistrel_parse_phase(phase, &frame.phase, &error)) return refuse(error.text);
  vistrel_default_conversion(&frame, &conversion);
  conversion.format = VISTREL_RGB24;
  image.pixels = pixels;
  image.size = sizeof pixels;
  if (vistrel_get_layout(&frame, &conversion, &layout, &error) ||
      vistrel_convert(&frame, &conversion, &image, &error))
    return refuse(error.text);

  fprintf(out, "P6\n%u %u\n255\n", (unsigned)layout.width, (unsigned)layout.height);
  return fwrite(pixels, 1, layout.bytes, out) != layout.bytes || fclose(out);
}

int main(int argc, char** argv) {
  FILE *in = argc == 5 ? fopen(argv[1], "rb") : NULL, *out = in ? fopen(argv[4], "wb") : NULL;
  if (!out) return refuse("convert FRAME.pgm PHASE BITS PICTURE.ppm");
  return convert(in, argv[2], (unsigned)strtoul(argv[3], NULL, 10), out);
}
