// What is known about each pixel of a sensor, as arrays.
#pragma once

#include <vector>

#include "python/extension/frame.h"

namespace vistrel::python {

class Calibration {
 public:
  // Dark frame and flat field are arrays of raw samples like the frame's, hot pixels rows of x and
  // y; or None. Of the flat field's samples the dark levels are subtracted, or else `black`.
  Calibration(py::handle dark, py::handle flat, py::handle hot, const ArrayFrame& input,
              const uint32_t (&black)[4]);
  Calibration(const Calibration&) = delete;
  Calibration& operator=(const Calibration&) = delete;

  const vistrel_calibration& get() const { return calibration_; }

 private:
  vistrel_calibration calibration_{};
  std::vector<py::array> kept_;
  std::vector<uint16_t> gains_;
};

}  // namespace vistrel::python
