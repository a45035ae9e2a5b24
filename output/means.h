// The means of bins, rounded, halves up. Samples above a ceiling count as that.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

// Writes the means of n bins: pixels of their samples. bins: the first sample of the first bin;
// pitch: samples from one of its rows to the next.
using MeanFunction = void (*)(const void* bins, size_t pitch, size_t n, uint32_t ceiling,
                              void* pixels);

// By whether there are three channels, and by binning.
struct MeanFunctions {
  MeanFunction of[2][3];
};

// The function of the current level. channels: 1 or 3 samples per pixel. binning: 2..4.
template <class T>
MeanFunction meanFunction(size_t channels, unsigned binning);

}  // namespace vistrel::core
