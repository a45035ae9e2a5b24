#include "cfa/ahd/ahd.h"

#define VISTREL_BODY "cfa/ahd/ahd_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

constexpr int evenDown(int v) { return v & ~1; }

template <class T>
AhdBoundaries boundariesOf(const CfaRows<T>& frame, CfaRect roi) {
  AhdBoundaries b{std::max(roi.x, kAhdReach), std::max(roi.y, kAhdReach), 0, 0};
  if (!frame.mosaic.isRedRow(b.y0)) ++b.y0;
  if (frame.mosaic.isGreenAt(b.x0, b.y0)) ++b.x0;
  b.xEnd = b.x0 + evenDown(std::min(frame.size.width - kAhdReach, roi.x + roi.width) - b.x0);
  b.yEnd = b.y0 + evenDown(std::min(frame.size.height - kAhdReach, roi.y + roi.height) - b.y0);
  return b;
}

// Moves the beginning of half rows to `column`. If it is odd, odd columns become even ones.
template <class T>
void moveTo(int column, const T* (&halves)[2]) {
  const T* const even = halves[column & 1] + column / 2;
  const T* const odd = halves[1 - (column & 1)] + (column + 1) / 2;
  halves[0] = even;
  halves[1] = odd;
}

}  // namespace

template <class T>
AhdStrip<T>::AhdStrip(const CfaRows<T>& frame, int x, int width, const AhdSettings& settings,
                      Arena& arena)
    : first_(x - kAhdReach), shift_(std::min(settings.shift, 15)), redLast_(settings.redLast),
      kernels_(*VISTREL_AT_LEVEL(settings.level, kAhdKernels<T>)),
      images_(frame, first_, static_cast<size_t>(width) + 2 * kAhdReach, settings.shift, kernels_,
              arena),
      choice_(images_, first_, static_cast<size_t>(width) + 2 * kAhdReach, kernels_, arena) {}

template <class T>
void AhdStrip<T>::store(int y, int x, int xEnd, RowSink<T>& sink) {
  choice_.run();
  const int column = x - first_;
  ChosenRows<T> rows{images_.halves(kAlongRow, y),
                     images_.halves(kAlongColumn, y),
                     {choice_.half(0), choice_.half(1)},
                     shift_};
  for (ImageHalves<T>* image : {&rows.h, &rows.v}) {
    moveTo(column, image->own);
    moveTo(column, image->green);
    moveTo(column, image->opposite);
  }
  moveTo(column, rows.choice);
  // The kernels store blue first.
  const Mosaic mosaic = images_.mosaic().from(column, 0);
  kernels_.pixels->ofRow(redLast_ ? mosaic : mosaic.exchanged(), y)(
      rows, static_cast<size_t>(xEnd - x), sink);
}

template <class T>
AhdRegion<T>::AhdRegion(const CfaRows<T>& frame, CfaRect roi, const AhdSettings& settings,
                        Arena& arena)
    : roi_(roi), inner_(boundariesOf(frame, roi)),
      strip_(frame, left(), end() - left(), settings, arena) {}

// The right band may begin to the left of the region; its running choice starts there.
template <class T>
int AhdRegion<T>::left() const {
  return inner_.y0 < inner_.yEnd ? std::min(roi_.x, inner_.xEnd) : roi_.x;
}

template <class T>
void AhdRegion<T>::restart(int y, const AhdChoice<T>& choice) const {
  if (!besideInner(y)) return choice.restartAt(roi_.x);
  choice.restartAt(left());
  if (inner_.x0 < inner_.xEnd) choice.restartAt(inner_.x0);
  if (inner_.xEnd < end()) choice.restartAt(inner_.xEnd);
}

template class AhdStrip<uint8_t>;
template class AhdStrip<uint16_t>;
template class AhdRegion<uint8_t>;
template class AhdRegion<uint16_t>;

}  // namespace vistrel::core
