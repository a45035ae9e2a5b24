/* convert FRAME.pgm PHASE BITS PICTURE.ppm: a binary PGM of 16-bit samples to a picture. */
#include <stdio.h>
#include <stdlib.h>
#include <vistrel/vistrel_host.h>

static int fail(const char* text) {
  fprintf(stderr, "%s\n", text);
  return 1;
}

static int convert(FILE* in, const char* phase, unsigned bits, FILE* out) {
  vistrel_packed packed = {0};
  vistrel_packed_layout unpacked;
  vistrel_frame frame = {0};
  vistrel_conversion conversion;
  vistrel_layout layout;
  vistrel_image image = {0};
  vistrel_error error;
  int magic = 0;
  static unsigned char bytes[1 << 24], samples[1 << 24], pixels[1 << 24];

  fscanf(in, "P5%n #%*[^\n]", &magic); /* a comment may follow */
  if (magic != 2 || fscanf(in, "%u %u %*u", &packed.width, &packed.height) != 2)
    return fail("not a PGM");
  fgetc(in);
  packed.bytes = bytes;
  packed.size = fread(bytes, 1, sizeof bytes, in);
  packed.packing = VISTREL_PACKING_BIG;
  packed.bits = bits;
  if (vistrel_get_packed_layout(&packed, &unpacked, &error) ||
      vistrel_unpack(&packed, samples, sizeof samples, &error))
    return fail(error.text);

  frame.samples = samples;
  frame.size = unpacked.unpacked_bytes;
  frame.width = packed.width;
  frame.height = packed.height;
  frame.bytes_per_sample = unpacked.bytes_per_sample;
  frame.bits = bits;
  if (vistrel_parse_phase(phase, &frame.phase, &error)) return fail(error.text);
  vistrel_default_conversion(&frame, &conversion);
  conversion.format = VISTREL_RGB24;
  image.pixels = pixels;
  image.size = sizeof pixels;
  if (vistrel_get_layout(&frame, &conversion, &layout, &error) ||
      vistrel_convert(&frame, &conversion, &image, &error))
    return fail(error.text);

  fprintf(out, "P6\n%u %u\n255\n", (unsigned)layout.width, (unsigned)layout.height);
  return fwrite(pixels, 1, layout.bytes, out) != layout.bytes || fclose(out);
}

int main(int argc, char** argv) {
  FILE *in = argc == 5 ? fopen(argv[1], "rb") : NULL, *out = in ? fopen(argv[4], "wb") : NULL;
  if (!out) return fail("convert FRAME.pgm PHASE BITS PICTURE.ppm");
  return convert(in, argv[2], (unsigned)strtoul(argv[3], NULL, 10), out);
}
