/* v4l2 DEVICE PHASE PICTURE.ppm: converts the frames of a camera in the memory into which its
   driver puts them, 8 or 10 bits of a mosaic, and keeps the tenth. */
#include <errno.h>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <vistrel/vistrel_host.h>

enum { kBuffers = 4, kFrames = 10 };

struct camera {
  int device;
  struct v4l2_pix_format format;
  void* memory[kBuffers];
  size_t size[kBuffers];
};

static int fail(const char* text) {
  fprintf(stderr, "%s: %s\n", text, strerror(errno));
  return 1;
}

/* Rows may be padded: bytesperline says how far apart they are. */
static int describe(const struct v4l2_pix_format* format, const char* phase, vistrel_frame* frame,
                    vistrel_error* error) {
  memset(frame, 0, sizeof *frame);
  frame->width = format->width;
  frame->height = format->height;
  frame->stride = format->bytesperline;
  switch (format->pixelformat) {
    case V4L2_PIX_FMT_SBGGR8:
    case V4L2_PIX_FMT_SGBRG8:
    case V4L2_PIX_FMT_SGRBG8:
    case V4L2_PIX_FMT_SRGGB8:
      frame->bytes_per_sample = 1;
      frame->bits = 8;
      break;
    case V4L2_PIX_FMT_SBGGR10P:
    case V4L2_PIX_FMT_SGBRG10P:
    case V4L2_PIX_FMT_SGRBG10P:
    case V4L2_PIX_FMT_SRGGB10P: frame->packing = VISTREL_PACKING_MIPI; /* fall through */
    case V4L2_PIX_FMT_SBGGR10:
    case V4L2_PIX_FMT_SGBRG10:
    case V4L2_PIX_FMT_SGRBG10:
    case V4L2_PIX_FMT_SRGGB10:
      frame->bytes_per_sample = 2;
      frame->bits = 10;
      break;
    default:
      fprintf(stderr, "the camera delivers other frames than those of a mosaic of 8 or 10 bits\n");
      return 1;
  }
  if (vistrel_parse_phase(phase, &frame->phase, error) == VISTREL_OK) return 0;
  fprintf(stderr, "%s\n", error->text);
  return 1;
}

static int map_buffers(struct camera* camera) {
  struct v4l2_requestbuffers request = {
      .count = kBuffers, .type = V4L2_BUF_TYPE_VIDEO_CAPTURE, .memory = V4L2_MEMORY_MMAP};
  if (ioctl(camera->device, VIDIOC_REQBUFS, &request) || request.count < kBuffers)
    return fail("no buffers");
  for (unsigned i = 0; i < kBuffers; ++i) {
    struct v4l2_buffer buffer = {
        .index = i, .type = V4L2_BUF_TYPE_VIDEO_CAPTURE, .memory = V4L2_MEMORY_MMAP};
    if (ioctl(camera->device, VIDIOC_QUERYBUF, &buffer)) return fail("no buffer");
    camera->size[i] = buffer.length;
    camera->memory[i] =
        mmap(NULL, buffer.length, PROT_READ, MAP_SHARED, camera->device, (off_t)buffer.m.offset);
    if (camera->memory[i] == MAP_FAILED) return fail("no memory");
    if (ioctl(camera->device, VIDIOC_QBUF, &buffer)) return fail("the buffer is not taken");
  }
  return 0;
}

static int start(const char* device, struct camera* camera) {
  struct v4l2_format format = {.type = V4L2_BUF_TYPE_VIDEO_CAPTURE};
  int type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
  camera->device = open(device, O_RDWR);
  if (camera->device < 0) return fail(device);
  if (ioctl(camera->device, VIDIOC_G_FMT, &format)) return fail("no format");
  camera->format = format.fmt.pix;
  if (map_buffers(camera)) return 1;
  return ioctl(camera->device, VIDIOC_STREAMON, &type) ? fail("the stream does not start") : 0;
}

/* Converts the next frame into image. */
static int convert_next(const struct camera* camera, vistrel_stream* stream, vistrel_frame* frame,
                        const vistrel_conversion* conversion, const vistrel_image* image,
                        vistrel_error* error) {
  struct v4l2_buffer buffer = {.type = V4L2_BUF_TYPE_VIDEO_CAPTURE, .memory = V4L2_MEMORY_MMAP};
  if (ioctl(camera->device, VIDIOC_DQBUF, &buffer)) return fail("no frame");
  frame->samples = camera->memory[buffer.index];
  frame->size = camera->size[buffer.index];
  if (vistrel_stream_convert(stream, frame, conversion, image, error))
    return fprintf(stderr, "%s\n", error->text), 1;
  return ioctl(camera->device, VIDIOC_QBUF, &buffer) ? fail("the buffer is not taken") : 0;
}

static int write_picture(const char* name, const vistrel_layout* layout, const void* pixels) {
  FILE* const file = fopen(name, "wb");
  if (!file) return fail(name);
  fprintf(file, "P6\n%u %u\n255\n", (unsigned)layout->width, (unsigned)layout->height);
  fwrite(pixels, 1, layout->bytes, file);
  return fclose(file) ? fail(name) : 0;
}

int main(int argc, char** argv) {
  struct camera camera;
  vistrel_stream* stream = NULL;
  vistrel_frame frame;
  vistrel_conversion conversion;
  vistrel_layout layout;
  vistrel_image image = {0};
  vistrel_error error;
  if (argc != 4) return fprintf(stderr, "v4l2 DEVICE PHASE PICTURE.ppm\n"), 2;
  if (start(argv[1], &camera)) return 1;
  if (describe(&camera.format, argv[2], &frame, &error)) return 1;
  vistrel_default_conversion(&frame, &conversion);
  conversion.format = VISTREL_RGB24;
  if (vistrel_get_layout(&frame, &conversion, &layout, &error) ||
      vistrel_stream_acquire(VISTREL_WAIT, &stream, &error))
    return fprintf(stderr, "%s\n", error.text), 1;
  image.size = layout.bytes;
  image.pixels = malloc(image.size);
  for (int i = 0; i < kFrames; ++i)
    if (convert_next(&camera, stream, &frame, &conversion, &image, &error)) return 1;
  vistrel_stream_release(stream, NULL);
  return write_picture(argv[3], &layout, image.pixels);
}
