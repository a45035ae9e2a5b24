// Corrects rows of samples by what is known about each pixel of a sensor.
#pragma once

#include <cstddef>
#include <cstdint>

#include "samples/prepare.h"

namespace vistrel::core {

// dark, flat: a 16-bit level and a 16-bit gain in 1/4096 for each sample, at any alignment; null:
// none.
struct CalibrationRow {
  const void* dark;
  const void* flat;
  ColumnPair<uint32_t> black;
  uint32_t fullScale;
};

// A sample s becomes
//   min((max(max(s, dark) - dark, black) - black) * flat / 4096, fullScale)
// with the quotient rounded to nearest, halves up; without flat, it is not divided.
template <class T>
void calibrateRow(T* samples, size_t n, const CalibrationRow& by);

}  // namespace vistrel::core
