// What vistrel.convert is asked for.
#pragma once

#include <pybind11/numpy.h>

#include "python/extension/frame.h"

namespace vistrel::python {

// The arguments of vistrel.convert and vistrel.develop, in this order: the package passes all.
enum Argument {
  kStream,
  kRaw,
  kPhase,
  kBits,
  kAlgorithm,
  kFormat,
  kRegion,
  kBinning,
  kBinMode,
  kWindow,
  kCurve,
  kTable,
  kBlack,
  kWhite,
  kGains,
  kEdges,
  kThreshold,
  kGray,
  kTruncateTo,
  kExcess,
  kAlign,
  kOrientation,
  kThreads,
  kLayout,
  kDtype,
  kOut,
  kLook  // of vistrel.develop alone
};

// Refers to the arguments' memory, which must live as long.
struct Request {
  ArrayFrame input;
  vistrel_conversion conversion;
  bool planes;         // channels come first
  bool floats;         // samples are divided by full scale
  size_t sampleBytes;  // of the format, before that
  uint32_t threads;
};

Request requestOf(const py::args& arguments);

}  // namespace vistrel::python
