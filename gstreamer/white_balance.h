// Automatic white balance of a stream.
#pragma once

#include <functional>
#include <optional>

#include "apps/look/look.h"

namespace vistrel::gstreamer {

enum class BalanceMode { kOff, kOnce, kContinuous };

class WhiteBalance {
 public:
  using Measure = std::function<app::Gains()>;

  // Forgets the gains.
  void reset() { *this = {}; }

  // The gains of the next frame, which begins that many seconds after the last one. They follow
  // those that `measure` finds, by 63 % in `timeConstant` seconds; the first ones at once. It is
  // called some times in a time constant. Small changes of what it finds count as noise.
  const app::Gains& next(BalanceMode mode, double seconds, double timeConstant,
                         const Measure& measure);

 private:
  using Logarithms = std::array<double, 3>;

  void aim(const app::Gains& found);

  std::optional<Logarithms> aim_;
  Logarithms now_{};
  double sinceMeasured_ = 0;
  app::Gains gains_{};
};

}  // namespace vistrel::gstreamer
