#include "demosaic/mosaic_ring.h"

#include <algorithm>

#include "common/mirror.h"
#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "demosaic/mosaic_ring-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
void guardHalf(T* half, size_t n) {
  half[-1] = half[0];
  half[n] = half[n - 1];
}

// halves: of a row of so many columns, margins included.
template <class T>
void mirrorColumns(T* const (&halves)[2], size_t columns, const Margins& margins) {
  const size_t left = margins.left, end = columns - margins.right, n = end - left;
  const auto at = [&](size_t x) -> T& { return halves[x % 2][x / 2]; };
  const auto fill = [&](size_t x) {
    at(x) = at(left + mirrored(static_cast<int64_t>(x) - static_cast<int64_t>(left), n));
  };
  for (size_t x = 0; x < left; ++x) fill(x);
  for (size_t x = end; x < columns; ++x) fill(x);
}

}  // namespace

// The slack after a half row that the widest vector reads. It is copied too; otherwise it would
// keep samples of an older row, which may have any value.
template <class T>
constexpr size_t kVectorSlack = 64 / sizeof(T);

// Smoothing runs one row behind loading and reads the row below its own.
template <class T>
MosaicRing<T>::MosaicRing(const DemosaicJob<T>& job, unsigned rows, Arena& arena,
                          DepthTracking depth)
    : source_(job.source), margins_(source_.margins()), mosaic_(job.mosaic),
      columns_(static_cast<size_t>(job.columns)), height_(job.height), depth_(depth),
      raw_(rows + 1, 2, columns_, arena), green_(rows, 1, columns_, arena) {}

template <class T>
void MosaicRing<T>::load(int y) {
  const T* const source = source_.withoutMargins(y);
  const size_t left = margins_.left, n = columns() - left - margins_.right;
  T* const halves[2] = {raw_.half(static_cast<unsigned>(y), 0),
                        raw_.half(static_cast<unsigned>(y), 1)};
  T* const first = halves[left % 2] + left / 2;
  T* const second = halves[(left + 1) % 2] + (left + 1) / 2;
  const MosaicKernels<T>& kernels = *VISTREL_BY_LEVEL(kMosaicKernels<T>);
  if (depth_ == DepthTracking::on)
    depths_.loaded(y, kernels.splitAndBits(source, n, first, second));
  else
    kernels.split(source, n, first, second);
  mirrorColumns(halves, columns(), margins_);
  guardHalf(halves[0], halfSize(0));
  guardHalf(halves[1], halfSize(1));
}

template <class T>
void MosaicRing<T>::smooth(int y) {
  const unsigned parity = mosaic().greenParity(y);
  const size_t n = halfSize(parity);
  const T* raw = raw_.half(static_cast<unsigned>(y), parity);
  T* green = green_.half(static_cast<unsigned>(y), 0);
  if (y == 0 || y == height() - 1) {
    std::copy_n(raw, n + kVectorSlack<T>, green);
  } else {
    const T* above = raw_.half(static_cast<unsigned>(y - 1), 1 - parity) + parity - 1;
    const T* below = raw_.half(static_cast<unsigned>(y + 1), 1 - parity) + parity - 1;
    VISTREL_BY_LEVEL(kMosaicKernels<T>)->smooth(raw, above, below, n, green);
    // The region's outer columns stay raw.
    if (parity == 0) green[0] = raw[0];
    if ((columns() & 1) != parity) green[n - 1] = raw[n - 1];
  }
  guardHalf(green, n);
}

template <class T>
const T* MosaicRing<T>::half(int y, unsigned columnParity) const {
  if (y < 0) y += 2;
  if (y >= height()) y -= 2;
  return columnParity == mosaic().greenParity(y)
             ? green_.half(static_cast<unsigned>(y), 0)
             : raw_.half(static_cast<unsigned>(y), columnParity);
}

template class MosaicRing<uint8_t>;
template class MosaicRing<uint16_t>;

}  // namespace vistrel::core
