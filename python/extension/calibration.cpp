#include "python/extension/calibration.h"

#include <algorithm>
#include <string>

#include "python/extension/arguments.h"

namespace vistrel::python {
namespace {

std::string sizeOf(const vistrel_frame& frame) {
  return "(" + std::to_string(frame.height) + ", " + std::to_string(frame.width) + ")";
}

// The values of samples that are as the frame's: 16 bits, side by side.
py::array levelsOf(py::handle value, const char* name, const vistrel_frame& frame) {
  const py::array array = arrayOf(value, name);
  const std::string argument = name;
  if (array.dtype().kind() != 'u' || array.itemsize() > 2)
    rejectType(VISTREL_BAD_CALIBRATION, argument + ".dtype", nameOf(array.dtype()),
               "uint8 or uint16");
  if (array.ndim() != 2 || array.shape(0) != frame.height || array.shape(1) != frame.width)
    reject(VISTREL_BAD_CALIBRATION, argument + ".shape", textOf(array.attr("shape")),
           "that of raw, " + sizeOf(frame));
  const bool isHigh = frame.alignment == VISTREL_HIGH_BITS && array.itemsize() == 2;
  const py::object low = isHigh ? array.attr("__rshift__")(16 - frame.bits) : py::object(array);
  return py::module_::import("numpy").attr("ascontiguousarray")(low, py::dtype::of<uint16_t>());
}

size_t bytesOf(const py::array& array) { return static_cast<size_t>(array.nbytes()); }

}  // namespace

Calibration::Calibration(py::handle dark, py::handle flat, py::handle hot, const ArrayFrame& input,
                         const uint32_t (&black)[4]) {
  if (!dark.is_none()) {
    kept_.push_back(levelsOf(dark, "dark", input.frame));
    calibration_.dark = kept_.back().data();
    calibration_.dark_size = bytesOf(kept_.back());
  }
  if (!flat.is_none()) {
    const py::array light = levelsOf(flat, "flat", input.frame);
    vistrel_frame frame{};
    frame.samples = light.data();
    frame.size = bytesOf(light);
    frame.width = input.frame.width;
    frame.height = input.frame.height;
    frame.bytes_per_sample = 2;
    frame.bits = 16;
    frame.phase = input.frame.phase;
    vistrel_conversion conversion = defaultConversion(frame);
    conversion.calibration = &calibration_;
    if (!calibration_.dark) std::copy(black, black + 4, conversion.black);
    gains_.resize(static_cast<size_t>(light.size()));
    vistrel_error error;
    check(vistrel_measure_flat(&frame, &conversion, gains_.data(), 2 * gains_.size(), &error),
          error);
    calibration_.flat = gains_.data();
    calibration_.flat_size = 2 * gains_.size();
  }
  if (hot.is_none()) return;
  kept_.push_back(py::reinterpret_borrow<py::array>(hot));  // the package has put it in order
  calibration_.hot = static_cast<const vistrel_point*>(kept_.back().data());
  calibration_.hot_count = static_cast<size_t>(kept_.back().shape(0));
}

}  // namespace vistrel::python
