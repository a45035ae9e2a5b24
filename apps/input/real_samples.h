// Samples of 16 bits from real numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "apps/options/input_options.h"

namespace vistrel::app {

// What a file's values are like.
struct RealValues {
  double least = std::numeric_limits<double>::infinity();
  double largest = -least;
  uint64_t blank = 0;  // neither finite nor a number

  void add(const double* values, size_t count);
};

// The range that such values are taken to have: 0 to 1 if none is above 2, otherwise 0 to 65535, so
// that a value is a sample; or 0 to the largest one if that is larger.
RealRange usualRange(const RealValues& values);

// "values from 0 to 1 become samples from 0 to 65535", and what is clipped.
std::string rangeNote(const RealRange& range, const RealValues& values);

// Whether a value is a sample.
bool isIdentity(const RealRange& range);

// Scales the range to 0..65535 and rounds. What is outside is clipped; blank values become 0.
void scaleToSamples(const double* values, size_t count, const RealRange& range, uint16_t* to);

}  // namespace vistrel::app
