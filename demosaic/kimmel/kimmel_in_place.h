// Kimmel's passes on single pixels of the work buffer.
#pragma once

#include <algorithm>

#include "common/arith.h"
#include "common/depth.h"
#include "demosaic/in_place.h"
#include "demosaic/kimmel/kimmel_formulas-inl.h"

namespace vistrel::core {

template <class Real, class Tap>
auto asReals(Tap tap) {
  return [tap](int dx, int dy) -> Real { return static_cast<Real>(tap(dx, dy)); };
}

template <class T>
T storedSample(double v) {
  return static_cast<T>(std::clamp(truncToInt(v), 0, kLimit<T>));
}

// Real: float or double. In the path of floats, block columns limit a value that exceeds 32 bits;
// everywhere else it is stored as 0.
template <class T, class Real>
struct KimmelPixel {
  InPlacePixel<T> p;
  bool inBlock;

  void fillGreen() const {
    if (!p.isGreen()) put(kGreen, base::Kimmel::green(asReals<Real>(p.sensed())));
  }

  void fillOpposite() const {
    if (p.isGreen()) return;
    const auto m = asReals<Real>(p.sensed());
    const auto g = asReals<Real>(p.channel(kGreen));
    // quirk: unbounded-tail. In the tail of a row, this pass alone uses hues without a bound.
    const auto hue = [=, bounded = inBlock](int dx, int dy) {
      return bounded ? base::hueOf(m(dx, dy), g(dx, dy)) : base::plainHue(m(dx, dy), g(dx, dy));
    };
    put(p.opposite(), base::Kimmel::opposite(g(0, 0), m, hue));
  }

  void fillAtGreen() const {
    if (!p.isGreen()) return;
    const auto g = asReals<Real>(p.channel(kGreen));
    for (int channel : {kRed, kBlue}) {
      const auto x = asReals<Real>(p.channel(channel));
      const auto hue = [=](int dx, int dy) { return base::hueOf(x(dx, dy), g(dx, dy)); };
      put(channel, base::Kimmel::atGreen(x, g, hue));
    }
  }

 private:
  void put(int channel, Real v) const {
    p.samples[channel] = storedSample<T>(inBlock ? std::min<double>(v, kLimit<T>) : v);
  }
};

// Completes each pass before the next one. pass(fill) calls a pixel's function for every pixel.
template <class T, class Real, class Pass>
void fillInOrder(Pass pass) {
  pass(&KimmelPixel<T, Real>::fillGreen);
  pass(&KimmelPixel<T, Real>::fillOpposite);
  pass(&KimmelPixel<T, Real>::fillAtGreen);
}

}  // namespace vistrel::core
