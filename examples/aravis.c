/* aravis CAMERA FORMAT WIDTH HEIGHT COUNT: converts frames of a GigE Vision or USB3 Vision camera
   in the buffers into which Aravis receives them, and prints the mean of each picture. Frames that
   lack packets are left out. */
#include <arv.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <vistrel/vistrel_host.h>

/* How PFNC names the colours of rows, by phase, and packings. */
static const char* const kColours[] = {[VISTREL_GRBG] = "BayerGR",
                                       [VISTREL_BGGR] = "BayerBG",
                                       [VISTREL_RGGB] = "BayerRG",
                                       [VISTREL_GBRG] = "BayerGB",
                                       [VISTREL_MONO] = "Mono"};
static const struct {
  uint32_t packing, least_bits;
  const char* suffix;
} kPackings[] = {{VISTREL_PACKING_BYTES, 8, ""},
                 {VISTREL_PACKING_LITTLE, 10, ""},
                 {VISTREL_PACKING_PFNC, 10, "p"},
                 {VISTREL_PACKING_GIGE, 10, "Packed"}};
enum { kPhases = 5, kPackingCount = 4, kDepths = 5, kFormats = kPhases * kPackingCount * kDepths };

/* What the format at an index is called, and what it says about a frame. Returns 0 if there is
   none at this index, as the library has no such packing. */
static int describe(unsigned index, char name[32], vistrel_frame* frame) {
  const unsigned phase = index % kPhases, i = index / kPhases % kPackingCount;
  const unsigned bits = 8 + 2 * (index / kPhases / kPackingCount);
  const vistrel_packed packed = {
      .width = 8, .height = 1, .packing = kPackings[i].packing, .bits = bits};
  vistrel_packed_layout layout;
  if (bits < kPackings[i].least_bits || vistrel_get_packed_layout(&packed, &layout, NULL)) return 0;
  snprintf(name, 32, "%s%u%s", kColours[phase], bits, kPackings[i].suffix);
  frame->bytes_per_sample = layout.bytes_per_sample;
  frame->bits = bits;
  frame->packing = packed.packing == VISTREL_PACKING_BYTES ? 0 : packed.packing;
  frame->phase = phase;
  return 1;
}

static int find_format(const char* wanted, vistrel_frame* frame) {
  char name[32];
  for (unsigned i = 0; i < kFormats; ++i)
    if (describe(i, name, frame) && !strcmp(name, wanted)) return 1;
  return 0;
}

static int reject_format(const char* wanted) {
  vistrel_frame frame;
  char name[32];
  fprintf(stderr, "unknown format %s; these are known:", wanted);
  for (unsigned i = 0; i < kFormats; ++i)
    if (describe(i, name, &frame)) fprintf(stderr, " %s", name);
  fprintf(stderr, "\n");
  return 2;
}

/* Prints the mean of the picture's samples. */
static int convert(vistrel_stream* stream, ArvBuffer* buffer, vistrel_frame* frame) {
  static unsigned char pixels[1 << 26];
  vistrel_conversion conversion;
  vistrel_layout layout;
  vistrel_error error;
  const vistrel_image image = {.pixels = pixels, .size = sizeof pixels};
  double sum = 0;
  frame->samples = arv_buffer_get_data(buffer, &frame->size);
  frame->width = (uint32_t)arv_buffer_get_image_width(buffer);
  frame->height = (uint32_t)arv_buffer_get_image_height(buffer);
  vistrel_default_conversion(frame, &conversion);
  if (vistrel_get_layout(frame, &conversion, &layout, &error) ||
      vistrel_stream_convert(stream, frame, &conversion, &image, &error))
    return fprintf(stderr, "%s\n", error.text), 1;
  for (size_t i = 0; i < layout.bytes; ++i) sum += pixels[i];
  printf("%.3f\n", sum / (double)layout.bytes);
  return 0;
}

/* The camera's stream, with buffers to receive frames. */
static ArvStream* start(ArvCamera* camera, char** argv, GError** error) {
  ArvStream* stream;
  size_t size;
  arv_camera_set_pixel_format_from_string(camera, argv[2], error);
  if (*error) return NULL;
  arv_camera_set_region(camera, 0, 0, atoi(argv[3]), atoi(argv[4]), error);
  if (*error) return NULL;
  if (arv_camera_is_gv_device(camera)) arv_camera_gv_auto_packet_size(camera, error);
  if (*error) return NULL;
  size = arv_camera_get_payload(camera, error);
  if (*error || !(stream = arv_camera_create_stream(camera, NULL, NULL, error))) return NULL;
  for (int i = 0; i < 8; ++i) arv_stream_push_buffer(stream, arv_buffer_new(size, NULL));
  arv_camera_start_acquisition(camera, error);
  return stream;
}

/* Converts that many frames. */
static int run(ArvStream* stream, int count, vistrel_frame* frame) {
  vistrel_stream* converter = NULL;
  int result = vistrel_stream_acquire(VISTREL_WAIT, &converter, NULL);
  while (count && !result) {
    ArvBuffer* const buffer = arv_stream_timeout_pop_buffer(stream, 2000000);
    if (!buffer) result = fprintf(stderr, "no frame in two seconds\n");
    if (buffer && arv_buffer_get_status(buffer) == ARV_BUFFER_STATUS_SUCCESS) {
      result = convert(converter, buffer, frame);
      --count;
    }
    if (buffer) arv_stream_push_buffer(stream, buffer);
  }
  vistrel_stream_release(converter, NULL);
  return result != 0;
}

int main(int argc, char** argv) {
  vistrel_frame frame = {0};
  GError* error = NULL;
  ArvCamera* camera;
  ArvStream* stream = NULL;
  int result;
  if (argc != 6) return fprintf(stderr, "aravis CAMERA FORMAT WIDTH HEIGHT COUNT\n"), 2;
  if (!find_format(argv[2], &frame)) return reject_format(argv[2]);
  camera = arv_camera_new(argv[1], &error);
  if (camera) stream = start(camera, argv, &error);
  if (error) return fprintf(stderr, "%s\n", error->message), 1;
  result = run(stream, atoi(argv[5]), &frame);
  arv_camera_stop_acquisition(camera, NULL);
  g_object_unref(stream);
  g_object_unref(camera);
  return result;
}
