/* The interface of a plug-in for camera raw files: one function, whose name is at the end. */
#ifndef VISTREL_CAMERA_RAW_PLUGIN_H
#define VISTREL_CAMERA_RAW_PLUGIN_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A mosaic as the camera stored it, without its masked border. Where 0 can't be a value, it stands
   for one that is unknown. */
struct vistrel_camera_raw {
  uint32_t width, height;
  uint32_t bits;       /* significant bits, the low ones of a sample: 8..16 */
  uint32_t colours[4]; /* VISTREL_RED to VISTREL_BLUE, of the top left 2x2 block, row by row */
  double black[4];     /* of the same block */
  double white;
  double neutral[3];    /* red, green, blue of a white object */
  double from_xyz[9];   /* a matrix, row by row, from XYZ to red, green, blue */
  uint32_t orientation; /* TIFF's code */
  double exposure_time, iso, aperture, focal_length; /* seconds, -, f-number, millimetres */
  char make[64], model[64];
  char date[20]; /* 2026-11-22T18:06:29 */
};

/* Allocates width * height samples; returns null if allocation fails. */
typedef uint16_t* (*vistrel_camera_raw_allocate)(void* context, const struct vistrel_camera_raw*);

/* Reads the file of `size` bytes at `bytes`. Returns 0 on success; otherwise writes a message of
   less than 200 bytes to `text`. */
typedef int (*vistrel_read_camera_raw_function)(const void* bytes, size_t size,
                                                vistrel_camera_raw_allocate allocateSamples,
                                                void* context, char text[200]);

#define VISTREL_READ_CAMERA_RAW "vistrel_read_camera_raw"

#ifdef __cplusplus
}
#endif

#endif
