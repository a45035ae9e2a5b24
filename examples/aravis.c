/* aravis CAMERA FORMAT COUNT: converts frames of a GigE Vision or USB3 Vision camera in the buffers
   into which Aravis receives them, and prints the mean of each picture. */
#include <arv.h>
#include <stdio.h>
#include <string.h>
#include <vistrel/vistrel_host.h>

/* More formats of PFNC lead to other bits and packings in the same way. */
static const struct {
  const char* name;
  uint32_t bytes_per_sample, bits, packing, phase;
} kFormats[] = {
    {"Mono8", 1, 8, 0, VISTREL_MONO},
    {"Mono16", 2, 16, VISTREL_PACKING_LITTLE, VISTREL_MONO},
    {"BayerRG8", 1, 8, 0, VISTREL_RGGB},
    {"BayerGR8", 1, 8, 0, VISTREL_GRBG},
    {"BayerRG12p", 2, 12, VISTREL_PACKING_PFNC, VISTREL_RGGB},
    {"BayerRG12Packed", 2, 12, VISTREL_PACKING_GIGE, VISTREL_RGGB},
};

static int describe(const char* name, vistrel_frame* frame) {
  for (size_t i = 0; i < sizeof kFormats / sizeof *kFormats; ++i)
    if (!strcmp(kFormats[i].name, name)) {
      frame->bytes_per_sample = kFormats[i].bytes_per_sample;
      frame->bits = kFormats[i].bits;
      frame->packing = kFormats[i].packing;
      frame->phase = kFormats[i].phase;
      return 1;
    }
  return 0;
}

/* Returns the mean of the picture's samples, or -1. */
static double convert(vistrel_stream* stream, ArvBuffer* buffer, vistrel_frame* frame) {
  static unsigned char pixels[1 << 26];
  vistrel_conversion conversion;
  vistrel_layout layout;
  vistrel_error error;
  const vistrel_image image = {.pixels = pixels, .size = sizeof pixels};
  double sum = 0;
  if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS) return -1;
  frame->samples = arv_buffer_get_data(buffer, &frame->size);
  frame->width = (uint32_t)arv_buffer_get_image_width(buffer);
  frame->height = (uint32_t)arv_buffer_get_image_height(buffer);
  vistrel_default_conversion(frame, &conversion);
  if (vistrel_get_layout(frame, &conversion, &layout, &error) ||
      vistrel_stream_convert(stream, frame, &conversion, &image, &error))
    return fprintf(stderr, "%s\n", error.text), -1;
  for (size_t i = 0; i < layout.bytes; ++i) sum += pixels[i];
  return sum / (double)layout.bytes;
}

/* The camera's stream, with buffers to receive frames. */
static ArvStream* start(ArvCamera* camera, const char* format, GError** error) {
  ArvStream* stream;
  size_t size;
  arv_camera_set_pixel_format_from_string(camera, format, error);
  if (*error) return NULL;
  size = arv_camera_get_payload(camera, error);
  if (*error || !(stream = arv_camera_create_stream(camera, NULL, NULL, error))) return NULL;
  for (int i = 0; i < 8; ++i) arv_stream_push_buffer(stream, arv_buffer_new(size, NULL));
  arv_camera_start_acquisition(camera, error);
  return stream;
}

int main(int argc, char** argv) {
  vistrel_frame frame = {0};
  vistrel_stream* converter = NULL;
  GError* error = NULL;
  ArvCamera* camera;
  ArvStream* stream = NULL;
  if (argc != 4 || !describe(argv[2], &frame))
    return fprintf(stderr, "aravis CAMERA FORMAT COUNT\n"), 2;
  camera = arv_camera_new(argv[1], &error);
  if (camera) stream = start(camera, argv[2], &error);
  if (error) return fprintf(stderr, "%s\n", error->message), 1;
  if (vistrel_stream_acquire(VISTREL_WAIT, &converter, NULL)) return 1;
  for (int i = 0; i < atoi(argv[3]); ++i) {
    ArvBuffer* const buffer = arv_stream_timeout_pop_buffer(stream, 2000000);
    if (!buffer) return fprintf(stderr, "no frame in two seconds\n"), 1;
    printf("%.3f\n", convert(converter, buffer, &frame));
    arv_stream_push_buffer(stream, buffer);
  }
  arv_camera_stop_acquisition(camera, NULL);
  vistrel_stream_release(converter, NULL);
  g_object_unref(stream);
  g_object_unref(camera);
  return 0;
}
