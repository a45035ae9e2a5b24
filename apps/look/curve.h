// Transfer curves, as the library draws them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "apps/look/look.h"

namespace vistrel::app {

// The library's points, evenly spaced in linear light; none for the linear curve.
std::vector<uint16_t> pointsOf(const Transfer& transfer, size_t count);

// A curve in few points, for decisions.
class CurveSketch {
 public:
  explicit CurveSketch(const Transfer& transfer, size_t count = 4096)
      : points_(pointsOf(transfer, count)) {}

  // Where the curve puts linear light x, 0 to 1, from 0 to 1.
  double at(double x) const;

 private:
  std::vector<uint16_t> points_;
};

}  // namespace vistrel::app
