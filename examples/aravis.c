/* aravis CAMERA FORMAT WIDTH HEIGHT COUNT: converts frames of a GigE Vision or USB3 Vision camera
   in the buffers into which Aravis receives them, and prints the mean of each picture. Frames that
   lack packets are left out. */
#include <arv.h>
#include <stdio.h>
#include <stdlib.h>
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
  if (argc != 6 || !describe(argv[2], &frame))
    return fprintf(stderr, "aravis CAMERA FORMAT WIDTH HEIGHT COUNT\n"), 2;
  camera = arv_camera_new(argv[1], &error);
  if (camera) stream = start(camera, argv, &error);
  if (error) return fprintf(stderr, "%s\n", error->message), 1;
  result = run(stream, atoi(argv[5]), &frame);
  arv_camera_stop_acquisition(camera, NULL);
  g_object_unref(stream);
  g_object_unref(camera);
  return result;
}
