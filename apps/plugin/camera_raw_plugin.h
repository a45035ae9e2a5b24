/* What a plug-in for camera raw files offers: one function, by the name at the end. */
#ifndef VISTREL_CAMERA_RAW_PLUGIN_H
#define VISTREL_CAMERA_RAW_PLUGIN_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A mosaic as the camera stored it, its masked border left out. */
struct vistrel_camera_raw {
  uint32_t width, height;
  uint32_t bits;  /* significant, in the low bits of a word: 8..16 */
  uint32_t phase; /* VISTREL_GRBG to VISTREL_GBRG */
  double black, white;
};

/* Gives room for width * height words; null where there is none. */
typedef uint16_t* (*vistrel_camera_raw_room)(void* context, const struct vistrel_camera_raw*);

/* Reads the file of `size` bytes at `bytes`. Returns 0, or else writes a text of less than 200
   bytes. */
typedef int (*vistrel_read_camera_raw_function)(const void* bytes, size_t size,
                                                vistrel_camera_raw_room room, void* context,
                                                char text[200]);

#define VISTREL_READ_CAMERA_RAW "vistrel_read_camera_raw"

#ifdef __cplusplus
}
#endif

#endif
