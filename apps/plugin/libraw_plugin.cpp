// Reads the mosaic of a camera raw file through LibRaw: unpacked, otherwise unchanged.
#include <libraw/libraw.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <ctime>
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
  vistrel_camera_raw result{};
  result.width = sizes.width;
  result.height = sizes.height;
  result.bits = bits;
  for (int i = 0; i < 4; ++i) result.colours[i] = colourAt(raw, i / 2, i % 2);
  return result;
}

// The level of all samples, that of the place's colour, and that of its place in a pattern of any
// size; the last is averaged.
double blackAt(LibRaw& raw, unsigned y, unsigned x) {
  const auto& color = raw.imgdata.color;
  const unsigned rows = color.cblack[4], columns = color.cblack[5];
  const double level = color.black + double{1} * color.cblack[raw.COLOR(y, x) & 3];
  constexpr unsigned kMost = LIBRAW_CBLACK_SIZE - 6;
  if (!rows || !columns || rows > kMost || columns > kMost || rows * columns > kMost) return level;
  double sum = 0;
  for (unsigned i = y; i < 2 * rows; i += 2)
    for (unsigned j = x; j < 2 * columns; j += 2)
      sum += color.cblack[6 + i % rows * columns + j % columns];
  return level + sum / (rows * columns);
}

// LibRaw gives a rotation: 3 by 180 degrees, 5 to the left, 6 to the right.
uint32_t orientationOf(int flip) {
  return flip == 0 ? 1 : flip == 3 ? 3 : flip == 5 ? 8 : flip == 6 ? 6 : 0;
}

void describeColour(LibRaw& raw, vistrel_camera_raw& to) {
  const auto& color = raw.imgdata.color;
  for (unsigned i = 0; i < 4; ++i) to.black[i] = blackAt(raw, i / 2, i % 2);
  to.white = color.maximum;
  if (color.cam_mul[0] > 0 && color.cam_mul[1] > 0 && color.cam_mul[2] > 0)
    for (int i = 0; i < 3; ++i) to.neutral[i] = double{color.cam_mul[1]} / color.cam_mul[i];
  for (int i = 0; i < 9; ++i) to.from_xyz[i] = color.cam_xyz[i / 3][i % 3];
}

void describeExposure(LibRaw& raw, vistrel_camera_raw& to) {
  const auto& other = raw.imgdata.other;
  to.orientation = orientationOf(raw.imgdata.sizes.flip);
  to.exposure_time = other.shutter;
  to.iso = other.iso_speed;
  to.aperture = other.aperture;
  to.focal_length = other.focal_len;
  std::snprintf(to.make, sizeof to.make, "%s", raw.imgdata.idata.make);
  std::snprintf(to.model, sizeof to.model, "%s", raw.imgdata.idata.model);
  std::tm date{};  // of the camera's clock, which LibRaw takes for local time
  if (other.timestamp > 0 && localtime_r(&other.timestamp, &date))
    std::strftime(to.date, sizeof to.date, "%Y-%m-%dT%H:%M:%S", &date);
}

void read(const void* bytes, size_t size, vistrel_camera_raw_allocate allocateSamples,
          void* context) {
  LibRaw raw(LIBRAW_OPIONS_NO_DATAERR_CALLBACK);
  check(raw.open_buffer(const_cast<void*>(bytes), size));
  check(raw.unpack());
  vistrel_camera_raw shape = describe(raw);
  describeColour(raw, shape);
  describeExposure(raw, shape);
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
