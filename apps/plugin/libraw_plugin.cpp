// Reads the mosaic of a camera raw file through LibRaw: unpacked, otherwise unchanged.
#include <libraw/libraw.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <stdexcept>

#include "apps/plugin/camera_raw_plugin.h"
#include "vistrel/vistrel_host.h"

namespace {

void check(int status) {
  if (status != LIBRAW_SUCCESS) throw std::runtime_error(LibRaw::strerror(status));
}

// LibRaw distinguishes the two greens: 0 red, 1 green, 2 blue, 3 green of the blue rows.
uint32_t colourAt(LibRaw& raw, int row, int column) {
  constexpr uint32_t kColours[] = {VISTREL_RED, VISTREL_GREEN, VISTREL_BLUE, VISTREL_GREEN};
  return kColours[raw.COLOR(row, column) & 3];
}

void checkFilters(LibRaw& raw) {
  if (raw.imgdata.idata.filters < 1000 || raw.imgdata.idata.colors != 3)
    throw std::runtime_error("its filters are not a Bayer mosaic of red, green and blue");
  for (int row = 0; row < 8; ++row)
    for (int column = 0; column < 2; ++column)
      if (colourAt(raw, row, column) != colourAt(raw, row & 1, column))
        throw std::runtime_error("its filters repeat after more than two rows");
}

const uint16_t* rowOf(const LibRaw& raw, uint32_t y) {
  const auto& sizes = raw.imgdata.sizes;
  return raw.imgdata.rawdata.raw_image + (y + sizes.top_margin) * (sizes.raw_pitch / 2) +
         sizes.left_margin;
}

vistrel_camera_raw describe(LibRaw& raw) {
  const auto& sizes = raw.imgdata.sizes;
  if (!raw.imgdata.rawdata.raw_image) throw std::runtime_error("it holds no mosaic");
  if (sizes.left_margin + sizes.width > sizes.raw_pitch / 2 ||
      sizes.top_margin + sizes.height > sizes.raw_height || !sizes.width || !sizes.height)
    throw std::runtime_error("its margins exceed the image");
  checkFilters(raw);
  unsigned largest = raw.imgdata.color.maximum;
  for (uint32_t y = 0; y < sizes.height; ++y)
    largest =
        std::max<unsigned>(largest, *std::max_element(rowOf(raw, y), rowOf(raw, y) + sizes.width));
  const auto bits = std::clamp(static_cast<uint32_t>(std::bit_width(largest)), 8u, 16u);
  return {sizes.width,
          sizes.height,
          bits,
          {colourAt(raw, 0, 0), colourAt(raw, 0, 1), colourAt(raw, 1, 0), colourAt(raw, 1, 1)},
          static_cast<double>(raw.imgdata.color.black),
          static_cast<double>(raw.imgdata.color.maximum)};
}

void read(const void* bytes, size_t size, vistrel_camera_raw_allocate allocateSamples,
          void* context) {
  LibRaw raw(LIBRAW_OPIONS_NO_DATAERR_CALLBACK);
  check(raw.open_buffer(const_cast<void*>(bytes), size));
  check(raw.unpack());
  const vistrel_camera_raw shape = describe(raw);
  uint16_t* to = allocateSamples(context, &shape);
  if (!to) throw std::bad_alloc();
  for (uint32_t y = 0; y < shape.height; ++y) to = std::copy_n(rowOf(raw, y), shape.width, to);
}

}  // namespace

extern "C" int vistrel_read_camera_raw(const void* bytes, size_t size,
                                       vistrel_camera_raw_allocate allocateSamples, void* context,
                                       char text[200]);

int vistrel_read_camera_raw(const void* bytes, size_t size,
                            vistrel_camera_raw_allocate allocateSamples, void* context,
                            char text[200]) {
  try {
    read(bytes, size, allocateSamples, context);
    return 0;
  } catch (const std::exception& error) {
    std::snprintf(text, 200, "%s", error.what());
    return 1;
  }
}
