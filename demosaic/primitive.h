// Shared by the algorithms that run as colour filter array primitives.
#pragma once

#include "demosaic/job.h"

namespace vistrel::core {

// The number of bits by which the 16-bit versions scale samples up, to all 16 bits.
template <class T>
uint32_t scaling(const DemosaicJob<T>& job) {
  return sizeof(T) == 1 ? 0 : (16 - job.bits) & 31;
}

}  // namespace vistrel::core
