#include "apps/look/curve.h"

#include <algorithm>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

std::vector<uint16_t> pointsOf(const Transfer& transfer, size_t count) {
  if (transfer.curve == Curve::kLinear) return {};
  return makeTransfer(static_cast<uint32_t>(transfer.curve), transfer.parameter, count);
}

double CurveSketch::at(double x) const {
  x = std::clamp(x, 0.0, 1.0);
  if (points_.empty()) return x;
  const double place = x * static_cast<double>(points_.size() - 1);
  const size_t k = std::min(static_cast<size_t>(place), points_.size() - 2);
  const double low = points_[k], high = points_[k + 1];
  return (low + (high - low) * (place - static_cast<double>(k))) / 65535;
}

}  // namespace vistrel::app
