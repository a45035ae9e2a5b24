// What the algorithms by filter-array primitives share.
#pragma once

#include "demosaic/job.h"

namespace vistrel::core {

// Sides of the frame that the primitives need.
constexpr int kSmallestNear = 2, kSmallestAhd = 5;

// By how many bits the 16-bit twins scale samples up to all 16 bits.
template <class T>
uint32_t scaling(const DemosaicJob<T>& job) {
  return sizeof(T) == 1 ? 0 : (16 - job.bits) & 31;
}

}  // namespace vistrel::core
