#include "output/means.h"

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "output/means-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

template <class T>
MeanFunction meanFunction(size_t channels, unsigned binning) {
  return (VISTREL_BY_LEVEL(kMeans<T>))->of[channels == 3][binning - 2];
}

template MeanFunction meanFunction<uint8_t>(size_t, unsigned);
template MeanFunction meanFunction<uint16_t>(size_t, unsigned);

}  // namespace vistrel::core
