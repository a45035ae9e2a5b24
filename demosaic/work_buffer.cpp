#include "demosaic/work_buffer.h"

#include <algorithm>

namespace vistrel::core {

namespace {

// s points to a green sample of the source that has all its neighbours.
template <class T>
T smoothed(const T* s, size_t stride) {
  const uint32_t diagonals = uint32_t{s[-1 - static_cast<ptrdiff_t>(stride)]} +
                             s[1 - static_cast<ptrdiff_t>(stride)] + s[stride - 1] + s[stride + 1];
  return static_cast<T>((diagonals + 4 * uint32_t{*s}) >> 3);
}

template <class T>
void scatterPixel(const Region& region, size_t stride, const T* s, uint32_t i, uint32_t j,
                  T* pixel) {
  const Site site = region.mosaic.siteAt(i, j);
  const bool interior = j > 0 && j + 1 < region.Hf && i > 0 && i + 1 < region.Wf;
  std::fill_n(pixel, 3, T{0});
  pixel[sensedChannel(site)] = isGreen(site) && interior ? smoothed(s, stride) : *s;
}

}  // namespace

template <class T>
void scatterMosaic(const Region& region, size_t sourceStride, const T* pSrc, T* pWork) {
  const WorkLayout layout = guardedLayout(region);
  const size_t side = layout.side;
  const size_t end = size_t{3} * region.Wf;
  for (uint32_t j = 0; j < region.Hf; ++j)
    for (uint32_t i = 0; i < region.Wf; ++i)
      scatterPixel(region, sourceStride, pSrc + j * sourceStride + region.x0 + i, i, j,
                   pWork + layout.row(j) + 3 * i);
  for (uint32_t j = 0; j < region.Hf; ++j) {
    T* image = pWork + layout.row(j);
    std::copy_n(image, side, image - side);
    std::copy_n(image + end - side, side, image + end);
  }
  // The upper guard comes first: if the image is lower than the guard, the lower copies read it.
  const ptrdiff_t Hf = region.Hf;
  T* const top = pWork + layout.row(0) - side;
  std::copy_n(top, kGuard * layout.S, pWork);
  std::copy_n(pWork + layout.row(Hf - 2) - side, kGuard * layout.S, pWork + layout.row(Hf) - side);
}

template void scatterMosaic(const Region&, size_t, const uint8_t*, uint8_t*);
template void scatterMosaic(const Region&, size_t, const uint16_t*, uint16_t*);

}  // namespace vistrel::core
