#include "host/calibration.h"

#include <algorithm>
#include <cstring>

#include "host/packings.h"
#include "host/preparation.h"
#include "host/status.h"
#include "samples/calibrate.h"

namespace vistrel::host {
namespace {

constexpr size_t kLevelBytes = 2;

uint64_t levelStrideOf(const vistrel_frame& f, size_t stride) {
  return stride ? stride : kLevelBytes * f.width;
}

// Checks the memory of levels for all pixels, if there are any.
void checkLevels(const vistrel_frame& f, const char* name, const void* levels, size_t size,
                 size_t stride) {
  if (!levels) return;
  const uint64_t rowBytes = kLevelBytes * f.width, distance = levelStrideOf(f, stride);
  if (distance < rowBytes)
    reject(VISTREL_BAD_STRIDE, textOf("calibration.{}_stride", name), stride,
           "a row of {} levels has {} bytes", f.width, rowBytes);
  if (f.height > 1 && distance > (SIZE_MAX / 2) / f.height)
    reject(VISTREL_TOO_LARGE, textOf("calibration.{}_stride", name), stride,
           "no memory can hold {} such rows", f.height);
  const uint64_t bytes = distance * (f.height - 1) + rowBytes;
  if (size < bytes)
    reject(VISTREL_SHORT_BUFFER, textOf("calibration.{}_size", name), size,
           "{} rows of stride {} take {} bytes", f.height, distance, bytes);
}

bool isBefore(const vistrel_point& a, const vistrel_point& b) {
  return a.y != b.y ? a.y < b.y : a.x < b.x;
}

void checkHotPixels(const vistrel_frame& f, const vistrel_calibration& c) {
  if (c.hot_count) checkPointer(c.hot, "calibration.hot");
  const auto fail = [&](size_t i, const char* reason) {
    reject(VISTREL_BAD_CALIBRATION, textOf("calibration.hot[{}]", i),
           textOf("({}, {})", c.hot[i].x, c.hot[i].y), "{}", reason);
  };
  for (size_t i = 0; i < c.hot_count; ++i) {
    if (c.hot[i].x >= f.width || c.hot[i].y >= f.height) fail(i, "it lies outside the frame");
    if (i && !isBefore(c.hot[i - 1], c.hot[i]))
      fail(i, "pixels come by rows and then columns, each one once");
  }
}

const unsigned char* levelsAt(const vistrel_frame& f, const void* levels, size_t stride, int64_t x,
                              size_t y) {
  if (!levels) return nullptr;
  return static_cast<const unsigned char*>(levels) + y * levelStrideOf(f, stride) +
         kLevelBytes * static_cast<size_t>(x);
}

}  // namespace

void checkCalibration(const vistrel_frame& f, const vistrel_conversion& c) {
  if (!c.calibration) return;
  const vistrel_calibration& by = *c.calibration;
  if (f.phase == VISTREL_BGR)
    reject(VISTREL_BAD_CALIBRATION, "conversion.calibration", "",
           "it is for Bayer and mono frames; this one is bgr");
  checkReserved("calibration.reserved", by.reserved);
  checkLevels(f, "dark", by.dark, by.dark_size, by.dark_stride);
  checkLevels(f, "flat", by.flat, by.flat_size, by.flat_stride);
  checkHotPixels(f, by);
}

Calibration::Calibration(const vistrel_frame& frame, const vistrel_conversion& conversion)
    : frame_(frame), conversion_(conversion), calibration_(*conversion.calibration),
      packing_(packingOf(frame)) {}

std::span<const vistrel_point> Calibration::hotPixelsOf(size_t y) const {
  const vistrel_point* const end = calibration_.hot + calibration_.hot_count;
  const auto [first, last] =
      std::equal_range(calibration_.hot, end, vistrel_point{0, static_cast<uint32_t>(y)},
                       [](const vistrel_point& a, const vistrel_point& b) { return a.y < b.y; });
  return {first, last};
}

template <class T>
void Calibration::calibrate(const void* from, int64_t x, size_t y, size_t n, T* samples) const {
  core::prepareRow(from, n, samples,
                   {frame_.bits, belowOf(frame_), 0, {0, 0}, {core::kGainOne, core::kGainOne}});
  core::calibrateRow(samples, n,
                     {levelsAt(frame_, calibration_.dark, calibration_.dark_stride, x, y),
                      levelsAt(frame_, calibration_.flat, calibration_.flat_stride, x, y),
                      blackOf(conversion_, x, static_cast<int64_t>(y)), (1u << frame_.bits) - 1});
}

template <class T>
T Calibration::valueAt(const unsigned char* frameRow, int64_t x, size_t y) const {
  const auto column = static_cast<size_t>(x);
  T sample{};
  if (packing_)
    core::unpackPart(*packing_, frameRow, frame_.width, column, column + 1, &sample);
  else if (frame_.bytes_per_sample == 1)
    sample = frameRow[column];
  else
    std::memcpy(&sample, frameRow + 2 * column, sizeof sample);
  calibrate(&sample, x, y, 1, &sample);
  return sample;
}

// hot: those of the pixel's row.
template <class T>
T Calibration::substituteFor(const vistrel_point& pixel, std::span<const vistrel_point> hot,
                             const unsigned char* frameRow) const {
  const int64_t step = isMosaic(frame_) ? 2 : 1, width = frame_.width;
  const auto isHot = [&](int64_t x) {
    return std::binary_search(hot.begin(), hot.end(),
                              vistrel_point{static_cast<uint32_t>(x), pixel.y}, isBefore);
  };
  int64_t left = pixel.x - step, right = pixel.x + step;
  while (left >= 0 && isHot(left)) left -= step;
  while (right < width && isHot(right)) right += step;
  uint32_t sum = 0, count = 0;
  for (const int64_t x : {left, right})
    if (x >= 0 && x < width) sum += valueAt<T>(frameRow, x, pixel.y), ++count;
  return static_cast<T>(count == 2 ? (sum + 1) / 2 : sum);
}

template <class T>
void Calibration::apply(const void* from, const unsigned char* frameRow, int64_t x, size_t y,
                        size_t n, T* samples) const {
  calibrate(from, x, y, n, samples);
  const auto hot = hotPixelsOf(y);
  for (const vistrel_point& pixel : hot) {
    const int64_t at = pixel.x - x;
    if (at >= 0 && at < static_cast<int64_t>(n))
      samples[at] = substituteFor<T>(pixel, hot, frameRow);
  }
}

template void Calibration::apply(const void*, const unsigned char*, int64_t, size_t, size_t,
                                 uint8_t*) const;
template void Calibration::apply(const void*, const unsigned char*, int64_t, size_t, size_t,
                                 uint16_t*) const;

}  // namespace vistrel::host
