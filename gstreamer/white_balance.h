// Automatic white balance of a stream.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "apps/look/look.h"
#include "gstreamer/light.h"

namespace vistrel::gstreamer {

enum class BalanceMode { kOff, kOnce, kContinuous };

class WhiteBalance {
 public:
  using Measure = std::function<app::Gains()>;

  // Forgets the gains.
  void reset() { *this = {}; }

  // The gains of the next frame, which begins that many seconds after the last one. The first ones
  // are those that `measure` finds. Gains follow a change of the light by 63 % in `timeConstant`
  // seconds; while nothing but noise changes, they move by less than 0.5 % a frame. Light is
  // measured in each of the first frames, then some times in a time constant, and more often where
  // it seems to change.
  const app::Gains& next(BalanceMode mode, double seconds, double timeConstant,
                         const Measure& measure);

 private:
  using Logarithms = Light::Logarithms;

  void aim(const app::Gains& found);
  void step(double part);

  Light light_;
  std::optional<Logarithms> aim_;
  Logarithms now_{};
  bool follows_ = false;  // a change of the light
  double sinceMeasured_ = 0;
  app::Gains gains_{};
};

}  // namespace vistrel::gstreamer
