// The means of bins, in loops that compilers turn into vector code.
#if defined(VISTREL_MEANS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_MEANS_INL_H
#undef VISTREL_MEANS_INL_H
#else
#define VISTREL_MEANS_INL_H
#endif

#include "common/simd/simd.h"
#include "output/means.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T, size_t channels, size_t N>
void meanRow(const void* bins, size_t pitch, size_t n, uint32_t ceiling, void* pixels) {
  const T* s = static_cast<const T*>(bins);
  T* __restrict d = static_cast<T*>(pixels);
  for (size_t x = 0; x < n; ++x, s += channels * N)
    for (size_t c = 0; c < channels; ++c) {
      uint32_t sum = N * N / 2;
      for (size_t i = 0; i < N; ++i)
        for (size_t j = 0; j < N; ++j) {
          const uint32_t v = s[i * pitch + channels * j + c];
          sum += v < ceiling ? v : ceiling;
        }
      d[channels * x + c] = static_cast<T>(sum / (N * N));
    }
}

template <class T>
constexpr MeanFunctions kMeans{{{meanRow<T, 1, 2>, meanRow<T, 1, 3>, meanRow<T, 1, 4>},
                                {meanRow<T, 3, 2>, meanRow<T, 3, 3>, meanRow<T, 3, 4>}}};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
