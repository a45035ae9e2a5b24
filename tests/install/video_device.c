/* A stand-in for a V4L2 camera, to be preloaded: the device /dev/video-stand-in delivers the frame
   of the file VISTREL_FRAME again and again. The file has 96x64 big-endian samples of 10 bits; the
   camera packs them as MIPI CSI-2 does, in rows that are padded. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

enum { kWidth = 96, kHeight = 64, kStride = 160, kSize = 12288, kMost = 32 };

static int device = -1;
static unsigned buffers, queued[kMost], first, count;

static void pack(const unsigned char* samples, unsigned char* row) {
  for (int x = 0; x < kWidth; x += 4, samples += 8, row += 5) {
    row[4] = 0;
    for (int i = 0; i < 4; ++i) {
      const unsigned sample = samples[2 * i] << 8 | samples[2 * i + 1];
      row[i] = (unsigned char)(sample >> 2);
      row[4] |= (unsigned char)((sample & 3) << (2 * i));
    }
  }
}

static int open_device(void) {
  static unsigned char samples[kWidth * kHeight * 2], frame[kSize];
  FILE* const file = fopen(getenv("VISTREL_FRAME"), "rb");
  if (!file || fread(samples, sizeof samples, 1, file) != 1) abort();
  fclose(file);
  memset(frame, 0xFF, sizeof frame);
  for (int y = 0; y < kHeight; ++y) pack(samples + y * kWidth * 2, frame + y * kStride);
  device = memfd_create("camera", 0);
  for (int i = 0; i < kMost; ++i)
    if (write(device, frame, kSize) != kSize) abort();
  return device;
}

int open(const char* path, int flags, ...) {
  int (*next)(const char*, int, ...) = (int (*)(const char*, int, ...))dlsym(RTLD_NEXT, "open");
  va_list arguments;
  int mode;
  if (!strcmp(path, "/dev/video-stand-in")) return open_device();
  va_start(arguments, flags);
  mode = va_arg(arguments, int);
  va_end(arguments);
  return next(path, flags, mode);
}

static int get_format(struct v4l2_format* format) {
  format->fmt.pix.width = kWidth;
  format->fmt.pix.height = kHeight;
  format->fmt.pix.pixelformat = V4L2_PIX_FMT_SRGGB10P;
  format->fmt.pix.bytesperline = kStride;
  format->fmt.pix.sizeimage = kStride * kHeight;
  return 0;
}

static int request(struct v4l2_requestbuffers* wanted) {
  if (wanted->count > kMost) wanted->count = kMost;
  buffers = wanted->count;
  return 0;
}

static int queue(const struct v4l2_buffer* buffer) {
  if (buffer->index >= buffers || count == kMost) return -1;
  queued[(first + count++) % kMost] = buffer->index;
  return 0;
}

static int dequeue(struct v4l2_buffer* buffer) {
  if (!count) return -1;
  buffer->index = queued[first];
  first = (first + 1) % kMost;
  --count;
  return 0;
}

int ioctl(int file, unsigned long code, ...) {
  int (*next)(int, unsigned long, ...) =
      (int (*)(int, unsigned long, ...))dlsym(RTLD_NEXT, "ioctl");
  va_list arguments;
  void* argument;
  va_start(arguments, code);
  argument = va_arg(arguments, void*);
  va_end(arguments);
  if (file != device) return next(file, code, argument);
  switch (code) {
    case VIDIOC_G_FMT: return get_format(argument);
    case VIDIOC_REQBUFS: return request(argument);
    case VIDIOC_QUERYBUF:
      ((struct v4l2_buffer*)argument)->length = kSize;
      ((struct v4l2_buffer*)argument)->m.offset = kSize * ((struct v4l2_buffer*)argument)->index;
      return 0;
    case VIDIOC_QBUF: return queue(argument);
    case VIDIOC_DQBUF: return dequeue(argument);
    case VIDIOC_STREAMON: return 0;
    default: return -1;
  }
}
