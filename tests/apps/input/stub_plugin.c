/* A plug-in for camera raw files that makes up a black frame and all that it says. */
#include <string.h>

#include "apps/plugin/camera_raw_plugin.h"
#include "vistrel/vistrel_host.h"

int vistrel_read_camera_raw(const void* bytes, size_t size,
                            vistrel_camera_raw_allocate allocateSamples, void* context,
                            char text[200]);

int vistrel_read_camera_raw(const void* bytes, size_t size,
                            vistrel_camera_raw_allocate allocateSamples, void* context,
                            char text[200]) {
  static const struct vistrel_camera_raw kRaw = {
      .width = 4,
      .height = 2,
      .bits = 10,
      .colours = {VISTREL_GREEN, VISTREL_BLUE, VISTREL_RED, VISTREL_GREEN},
      .black = {1, 2, 3, 4.5},
      .white = 1000,
      .neutral = {0.5, 1, 0.625},
      .from_xyz = {0.75, -0.125, -0.25, -0.5, 1.25, 0.25, -0.125, 0.25, 0.5},
      .orientation = 8,
      .exposure_time = 0.25,
      .iso = 400,
      .aperture = 5.5,
      .focal_length = 35,
      .make = "Maker",
      .model = "Model 1",
      .date = "2026-11-22T18:06:29"};
  uint16_t* const samples = allocateSamples(context, &kRaw);
  (void)bytes, (void)size, (void)text;
  memset(samples, 0, 8 * sizeof *samples);
  return 0;
}
