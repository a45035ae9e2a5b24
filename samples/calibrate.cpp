#include "samples/calibrate.h"

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "samples/calibrate-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

template <class T>
void calibrateRow(T* samples, size_t n, const CalibrationRow& by) {
  VISTREL_BY_LEVEL(calibrateRow<T>)(samples, n, by);
}

template void calibrateRow(uint8_t*, size_t, const CalibrationRow&);
template void calibrateRow(uint16_t*, size_t, const CalibrationRow&);

}  // namespace vistrel::core
