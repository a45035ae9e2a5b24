// What vistrel.convert is asked for.
#pragma once

#include <memory>

#include "python/extension/calibration.h"

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
  kDark,
  kFlat,
  kHot,
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
  std::unique_ptr<const Calibration> calibration;  // null: none
};

Request requestOf(const py::args& arguments);

// Makes the request's conversion use what the arguments say about the sensor. The flat field has
// the black levels `black` if there is no dark frame.
void calibrate(Request& request, const py::args& arguments, const uint32_t (&black)[4]);

}  // namespace vistrel::python
