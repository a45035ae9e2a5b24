// How a conversion's arguments become those of a filter-array primitive.
#pragma once

#include "cfa/frame.h"
#include "demosaic/conversion.h"

namespace vistrel {

// The primitive sees a frame as high as the region.
template <class T>
CfaSize primitiveSize(const Conversion<T>& c) {
  return {static_cast<int32_t>(c.sourceStride), static_cast<int32_t>(c.region.Hf)};
}

// The row origin moves the source here, and so cuts off the last rows.
template <class T>
CfaRect primitiveRoi(const Conversion<T>& c) {
  const Region& r = c.region;
  return clipped({int(r.x0), int(r.y0), int(r.Wf), int(r.Hf)}, primitiveSize(c));
}

// By how many bits the 16-bit twins scale samples up to all of their word.
template <class T>
uint32_t scaling(const Conversion<T>& c) {
  return (16 - c.nSrcBits) & 31;
}

}  // namespace vistrel
