// Calibration of a frame's samples: dark frame, black levels, flat field, hot pixels.
#pragma once

#include <optional>
#include <span>

#include "host/plan.h"
#include "samples/unpack.h"

namespace vistrel::host {

// Throws Rejection.
void checkCalibration(const vistrel_frame& frame, const vistrel_conversion& conversion);

class Calibration {
 public:
  // The conversion must outlive the object, but not its structure for the calibration.
  Calibration(const vistrel_frame& frame, const vistrel_conversion& conversion);

  // Calibrates the n samples from pixel (x, y) of the frame on. `from` holds them as they are
  // stored, in samples of T, and may be the result. frameRow: the frame's row.
  template <class T>
  void apply(const void* from, const unsigned char* frameRow, int64_t x, size_t y, size_t n,
             T* samples) const;

 private:
  std::span<const vistrel_point> hotPixelsOf(size_t y) const;
  template <class T>
  void calibrate(const void* from, int64_t x, size_t y, size_t n, T* samples) const;
  template <class T>
  T valueAt(const unsigned char* frameRow, int64_t x, size_t y) const;
  template <class T>
  T substituteFor(const vistrel_point& pixel, std::span<const vistrel_point> hot,
                  const unsigned char* frameRow) const;

  const vistrel_frame& frame_;
  const vistrel_conversion& conversion_;
  const vistrel_calibration calibration_;
  std::optional<core::Packing> packing_;
};

}  // namespace vistrel::host
