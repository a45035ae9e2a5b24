#include "cfa/ahd.h"

namespace vistrel {

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
    : m_roi(roi), m_seams(seamsOf(frame, roi)), m_rows(frame, strip(), shift, level) {}

// The right band may begin to the left of the region: its choice runs from there.
template <class T>
CfaRect AhdRegion<T>::strip() const {
  const int left = m_seams.y0 < m_seams.yEnd ? std::min(m_roi.x, m_seams.xEnd) : m_roi.x;
  return {left, m_roi.y, m_roi.x + m_roi.width - left, m_roi.height};
}

template <class T>
void AhdRegion<T>::row(int y, T* pixels, RowCopies<T>& copies) {
  const int frameRow = m_roi.y + y, end = m_roi.x + m_roi.width;
  m_rows.goTo(frameRow);
  if (besideInner(frameRow)) {
    m_rows.beginAt(strip().x);
    if (m_seams.x0 < m_seams.xEnd) m_rows.beginAt(m_seams.x0);
    if (m_seams.xEnd < end) m_rows.beginAt(m_seams.xEnd);
  } else {
    m_rows.beginAt(m_roi.x);
  }
  m_rows.store(m_roi.x, end, pixels, copies);
}

template class AhdRegion<uint8_t>;
template class AhdRegion<uint16_t>;

}  // namespace vistrel
