#include "cfa/near/near.h"
#include "demosaic/primitive_call.h"

namespace vistrel::core {

namespace {

constexpr int kSmallestSide = 2;

// The 16-bit twin works on samples scaled to all sixteen bits.
template <class T>
void nearNeighbor(const Conversion<T>& c) {
  PrimitiveCall<T> call(c);
  if (call.isRefused(kSmallestSide)) return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  call.frame.rounding = Rounding(scaling(c));
  NearRegion<T> region(call.frame, call.roi);
  convertRegion(c, call.roi, region);
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC_IN(compactLayout, ImageColorNearNeighbor, nearNeighbor)

}  // namespace vistrel::core
