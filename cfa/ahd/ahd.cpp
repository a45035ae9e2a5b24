#include "cfa/ahd/ahd.h"

namespace vistrel::core {

namespace {

constexpr int evenDown(int v) { return v & ~1; }

template <class T>
AhdSeams seamsOf(const CfaFrame<T>& frame, CfaRect roi) {
  constexpr int kMargin = AhdRows<T>::kReach;
  AhdSeams s{std::max(roi.x, kMargin), std::max(roi.y, kMargin), 0, 0};
  const bool redAtOrBelow = frame.isRedRow(s.y0) != frame.isGreen(s.x0, s.y0);
  if (!redAtOrBelow) ++s.x0;
  if (frame.isGreen(s.x0, s.y0)) ++s.y0;
  s.xEnd = s.x0 + evenDown(std::min(frame.size.width - kMargin, roi.x + roi.width) - s.x0);
  s.yEnd = s.y0 + evenDown(std::min(frame.size.height - kMargin, roi.y + roi.height) - s.y0);
  return s;
}

}  // namespace

template <class T>
AhdRegion<T>::AhdRegion(const CfaFrame<T>& frame, CfaRect roi, int shift, Level level)
    : roi_(roi), seams_(seamsOf(frame, roi)), rows_(frame, strip(), shift, level) {}

// The right band may begin to the left of the region: its choice runs from there.
template <class T>
CfaRect AhdRegion<T>::strip() const {
  const int left = seams_.y0 < seams_.yEnd ? std::min(roi_.x, seams_.xEnd) : roi_.x;
  return {left, roi_.y, roi_.x + roi_.width - left, roi_.height};
}

template <class T>
void AhdRegion<T>::row(int y, T* pixels, RowCopies<T>& copies) {
  const int frameRow = roi_.y + y, end = roi_.x + roi_.width;
  rows_.goTo(frameRow);
  if (besideInner(frameRow)) {
    rows_.beginAt(strip().x);
    if (seams_.x0 < seams_.xEnd) rows_.beginAt(seams_.x0);
    if (seams_.xEnd < end) rows_.beginAt(seams_.xEnd);
  } else {
    rows_.beginAt(roi_.x);
  }
  rows_.store(roi_.x, end, pixels, copies);
}

template class AhdRegion<uint8_t>;
template class AhdRegion<uint16_t>;

}  // namespace vistrel::core
