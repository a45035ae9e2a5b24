// Calibrates samples in loops that compilers turn into vector code, a short tile at a time.
#if defined(VISTREL_CALIBRATE_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_CALIBRATE_INL_H
#undef VISTREL_CALIBRATE_INL_H
#else
#define VISTREL_CALIBRATE_INL_H
#endif

#include "common/simd/simd.h"
#include "samples/calibrate.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// An even number of samples, so that tiles begin in even columns.
constexpr size_t kCalibrationTile = 256;

// At most n: 16-bit values from sample i on, or `otherwise` without any.
VISTREL_INLINE void loadTile(const void* row, size_t i, size_t n, uint16_t otherwise,
                             uint16_t (&tile)[kCalibrationTile]) {
  if (row) return void(std::memcpy(tile, static_cast<const char*>(row) + 2 * i, 2 * n));
  for (uint16_t& value : tile) value = otherwise;
}

template <class T>
void calibrateRow(T* samples, size_t n, const CalibrationRow& by) {
  uint16_t dark[kCalibrationTile], flat[kCalibrationTile];
  for (size_t done = 0; done < n; done += kCalibrationTile) {
    const size_t count = n - done < kCalibrationTile ? n - done : kCalibrationTile;
    loadTile(by.dark, done, count, 0, dark);
    loadTile(by.flat, done, count, kGainOne, flat);
    T* const s = samples + done;
    for (size_t i = 0; i < count; ++i) {
      const uint32_t black = i % 2 ? by.black.odd : by.black.even;
      const uint32_t level = dark[i] + black;
      const uint32_t above = s[i] > level ? s[i] - level : 0;
      const uint32_t value = (above * flat[i] + kGainOne / 2) / kGainOne;
      s[i] = static_cast<T>(value < by.fullScale ? value : by.fullScale);
    }
  }
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
