// Stores a row of finished pixels from half rows. No kernel tests sites within a row: its green
// sites all have the same column parity, and the others are all red or all blue.
#if defined(VISTREL_PIXEL_KERNELS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PIXEL_KERNELS_INL_H
#undef VISTREL_PIXEL_KERNELS_INL_H
#else
#define VISTREL_PIXEL_KERNELS_INL_H
#endif

#include "common/rows/pixel_kernels.h"
#include "common/simd/interleave-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// One vector of each half row of a row, by column parity. own: the colour that the row senses
// besides green; opposite: the colour that the rows above and below sense.
template <class T>
struct Halves {
  Vec<T> own[2], green[2], opposite[2];
};

// Fill::at<T, greenParity>(rows, k) returns the Halves at elements k .. k + kLanes - 1.
template <class T, class Rows, class Fill, int greenParity, bool redRow>
VISTREL_INLINE void storeBlock(const Rows& rows, size_t k, T* pixels, T* copy) {
  const Halves<T> halves = Fill::template at<T, greenParity>(rows, k);
  if constexpr (redRow)
    storePixels<T>(pixels, copy, halves.opposite, halves.green, halves.own);
  else
    storePixels<T>(pixels, copy, halves.own, halves.green, halves.opposite);
}

template <class T, class Rows, class Fill, int greenParity, bool redRow>
void pixelRow(const Rows& source, size_t columns, RowSink<T>& sink) {
  const Rows rows = source;
  const auto progress = sink.progress();
  T *const pixels = sink.pixels(), *const copy = sink.copy();
  constexpr size_t step = 2 * kLanes<T>;
  size_t x = 0;
  for (; x + step <= columns; x += step) {
    storeBlock<T, Rows, Fill, greenParity, redRow>(rows, x / 2, pixels + 3 * x,
                                                   copy ? copy + 3 * x : nullptr);
    progress.written(x, x + step);
  }
  if (x == columns) return;
  T block[3 * step];
  storeBlock<T, Rows, Fill, greenParity, redRow>(rows, x / 2, block, nullptr);
  const size_t rest = 3 * (columns - x) * sizeof(T);
  std::memcpy(pixels + 3 * x, block, rest);
  if (copy) std::memcpy(copy + 3 * x, block, rest);
}

// Indexed by the column parity of the green sites, then by whether the row's other sites are red.
template <class T, class Rows, class Fill>
constexpr PixelKernels<T, Rows> kPixelKernels = {
    {{pixelRow<T, Rows, Fill, 0, false>, pixelRow<T, Rows, Fill, 0, true>},
     {pixelRow<T, Rows, Fill, 1, false>, pixelRow<T, Rows, Fill, 1, true>}}};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
