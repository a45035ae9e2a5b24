/* pipe WIDTH HEIGHT PHASE BITS <FRAMES >PICTURES: frames of 16-bit samples that arrive in portions
   of any size. Rows of a picture leave as soon as the rows that they are made from are there. */
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>
#include <vistrel/vistrel_host.h>

static int fail(const char* text) {
  fprintf(stderr, "%s\n", text);
  return 1;
}

/* Reads what is there, at most the rest of a frame. Returns the number of bytes; 0 at the end. */
static size_t receive(unsigned char* to, size_t most) {
  const ssize_t bytes = read(STDIN_FILENO, to, most);
  return bytes > 0 ? (size_t)bytes : 0;
}

/* Converts a frame while it arrives. Returns 0 if it is complete. */
static int convert(vistrel_stream* stream, const vistrel_frame* frame,
                   const vistrel_conversion* conversion, const vistrel_image* image,
                   unsigned char* samples, vistrel_error* error) {
  const size_t row = (size_t)frame->width * 2, size = row * frame->height;
  const size_t image_row = image->size / frame->height;
  size_t received = 0, pushed = 0;
  uint32_t written = 0, final = 0;
  if (vistrel_stream_begin(stream, frame, conversion, image, error)) return fail(error->text);
  while (pushed < size) {
    const size_t bytes = receive(samples + received, size - received);
    uint32_t rows;
    if (!bytes) return vistrel_stream_abort(stream, NULL), received ? fail("half a frame") : 2;
    received += bytes;
    rows = (uint32_t)((received - pushed) / row);
    if (!rows) continue;
    if (vistrel_stream_push(stream, samples + pushed, rows * row, rows, &final, error))
      return fail(error->text);
    pushed += rows * row;
    fwrite((unsigned char*)image->pixels + written * image_row, image_row, final - written, stdout);
    fflush(stdout);
    written = final;
  }
  return 0;
}

int main(int argc, char** argv) {
  vistrel_frame frame = {0};
  vistrel_conversion conversion;
  vistrel_layout layout;
  vistrel_image image = {0};
  vistrel_stream* stream = NULL;
  vistrel_error error;
  unsigned char* samples;
  int result = 0;
  if (argc != 5) return fail("pipe WIDTH HEIGHT PHASE BITS");
  frame.width = (uint32_t)strtoul(argv[1], NULL, 10);
  frame.height = (uint32_t)strtoul(argv[2], NULL, 10);
  frame.bytes_per_sample = 2;
  frame.bits = (uint32_t)strtoul(argv[4], NULL, 10);
  if (vistrel_parse_phase(argv[3], &frame.phase, &error)) return fail(error.text);
  vistrel_default_conversion(&frame, &conversion);
  conversion.format = VISTREL_RGB24;
  if (vistrel_get_layout(&frame, &conversion, &layout, &error) ||
      vistrel_stream_acquire(VISTREL_WAIT, &stream, &error))
    return fail(error.text);
  samples = malloc(layout.frame_bytes);
  image.size = layout.bytes;
  image.pixels = malloc(image.size);
  if (!samples || !image.pixels) return fail("out of memory");
  while (!(result = convert(stream, &frame, &conversion, &image, samples, &error)))
    ;
  vistrel_stream_release(stream, NULL);
  free(samples);
  free(image.pixels);
  return result == 2 ? 0 : result; /* 2: no further frame */
}
