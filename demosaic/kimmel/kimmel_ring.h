// The rows that Kimmel's passes hand to each other, a few at a time, as floats or doubles.
#pragma once

#include <initializer_list>

#include "demosaic/guarded.h"
#include "demosaic/kimmel/kimmel_kernels.h"

namespace vistrel::core {

// The mosaic, repeated beyond the region as in the guard, and the values at its red and blue sites:
// one element per site, zero beyond the region.
template <class T, class Real>
class KimmelRing {
 public:
  enum Plane : unsigned { kEven, kOdd, kGreenThere, kHue, kOpposite, kOppositeHue, kPlanes };

  KimmelRing(const MosaicRing<T>& ring, Arena& arena)
      : ring_(ring), planes_(kRows + 1, kPlanes, ring.columns(), arena) {}

  Real* half(int y, unsigned plane) const {
    return planes_.at(static_cast<unsigned>(y) % kRows, plane);
  }
  // The planes of the mosaic with row y's green and with its other colour.
  Plane greens(int y) const { return Plane(ring_.mosaic().greenParity(y)); }
  Plane colours(int y) const { return Plane(ring_.mosaic().colourParity(y)); }
  size_t sites(int y) const { return ring_.colourSites(y); }  // red or blue sites

  // Completes row y of these planes after their sites have been computed.
  //
  // quirk: guard-green. Beyond the region green is zero where another colour is sensed.
  void guard(int y, std::initializer_list<Plane> planes) const {
    for (Plane plane : planes) half(y, plane)[-1] = half(y, plane)[sites(y)] = 0;
  }

  HalfRowWindow<Real, 2> mosaic(int y) const {
    HalfRowWindow<Real, 2> w;
    for (int dy = -2; dy <= 2; ++dy)
      for (Plane plane : {kEven, kOdd}) w.half[dy + 2][plane] = row(y + dy, plane);
    return w;
  }
  KimmelDiagonals<Real> diagonals(int y) const {
    return {mosaic(y), around(y, kGreenThere, kGreenThere), around(y, kHue, kHue)};
  }
  KimmelCross<Real> cross(int y) const {
    return {around(y, kGreenThere, kGreenThere), around(y, colours(y), kOpposite),
            around(y, kHue, kOppositeHue), around(y, kOpposite, colours(y + 1)),
            around(y, kOppositeHue, kHue)};
  }

 private:
  static constexpr unsigned kRows = 6;

  // The ring's last row stays zero.
  const Real* row(int y, Plane plane) const {
    const bool above = y < 0, below = y >= ring_.height();
    if ((above || below) && plane > kOdd) return planes_.at(kRows, plane);
    return half(above ? y + 2 : below ? y - 2 : y, plane);
  }

  // The values at the red and blue sites of row y and of the rows above and below, with row y's
  // green in between.
  HalfRowWindow<Real, 1> around(int y, Plane beside, Plane aboveAndBelow) const {
    const unsigned green = greens(y);
    HalfRowWindow<Real, 1> w{};
    w.half[0][green] = row(y - 1, aboveAndBelow);
    w.half[1][green] = half(y, green);
    w.half[1][1 - green] = half(y, beside);
    w.half[2][green] = row(y + 1, aboveAndBelow);
    return w;
  }

  const MosaicRing<T>& ring_;
  HalfRowRing<Real> planes_;
};

}  // namespace vistrel::core
