#include "cfa/ahd.h"

#include "cfa/ahd_rows.h"
#include "common/sweep.h"

namespace vistrel {

namespace {

constexpr int kReach = 5;

// Where the rectangles meet. The inner one has a margin of kReach to the frame's edges, begins at a
// red site and has even sides; above and below it lie bands of the region's width, beside it the
// left and the right band.
struct Seams {
  int x0, y0, xEnd, yEnd;  // the inner rectangle; its size may be negative

  template <class T>
  Seams(const CfaFrame<T>& frame, CfaRect roi)
      : x0(std::max(roi.x, kReach)), y0(std::max(roi.y, kReach)) {
    if (!hasRedAtOrBelow(frame)) ++x0;
    if (frame.isGreen(x0, y0)) ++y0;
    xEnd = x0 + evenDown(std::min(frame.size.width - kReach, roi.x + roi.width) - x0);
    yEnd = y0 + evenDown(std::min(frame.size.height - kReach, roi.y + roi.height) - y0);
  }

 private:
  static int evenDown(int v) { return v & ~1; }

  // In column x0, of rows y0 and y0 + 1.
  template <class T>
  bool hasRedAtOrBelow(const CfaFrame<T>& frame) const {
    return frame.isRedRow(y0) != frame.isGreen(x0, y0);
  }
};

template <class T>
class AhdFrame {
 public:
  AhdFrame(const CfaFrame<T>& frame, CfaRect roi, T* dst, ptrdiff_t dstStep, int shift)
      : m_roi(roi), m_seams(frame, roi), m_left(leftmost()), m_dst(dst), m_dstStep(dstStep),
        m_rows(frame, m_left, roi.x + roi.width - m_left, shift) {}

  bool run() {
    if (!m_rows) return false;
    const int top = m_roi.y - kReach;  // of the rows that are read
    sweepInside(m_roi.height + 2 * kReach,
                stage(0, [&](int y) { m_rows.load(top + y); }),
                stage(2, [&](int y) { m_rows.green(top + y); }),
                stage(1, [&](int y) { m_rows.colours(top + y); }),
                stage(1, [&](int y) { m_rows.scores(top + y); }),
                stage(1, [&](int y) { emit(top + y); }));
    return true;
  }

 private:
  bool besideInner(int y) const { return m_seams.y0 <= y && y < m_seams.yEnd; }

  // The right band may begin to the left of the region: its choice runs from there.
  int leftmost() const {
    return m_seams.y0 < m_seams.yEnd ? std::min(m_roi.x, m_seams.xEnd) : m_roi.x;
  }

  void choose(int from, int to) { m_rows.choose(from - m_left, to - m_left); }

  void emit(int y) {
    const int x = m_roi.x, end = m_roi.x + m_roi.width;
    m_rows.sums(y);
    if (besideInner(y)) {
      choose(x, std::min(m_seams.x0, end));
      if (m_seams.x0 < m_seams.xEnd) choose(m_seams.x0, m_seams.xEnd);
      if (m_seams.xEnd < end) choose(m_seams.xEnd, end);
    } else {
      choose(x, end);
    }
    m_rows.store(y, x - m_left, end - m_left, m_dst + (y - m_roi.y) * m_dstStep);
  }

  CfaRect m_roi;
  Seams m_seams;
  int m_left;
  T* m_dst;
  ptrdiff_t m_dstStep;
  AhdRows<T> m_rows;
};

}  // namespace

template <class T>
bool demosaicAhd(const CfaFrame<T>& frame, CfaRect roi, T* pDst, ptrdiff_t dstStep, int shift) {
  return AhdFrame<T>(frame, roi, pDst, dstStep, shift).run();
}

template bool demosaicAhd(const CfaFrame<uint8_t>&, CfaRect, uint8_t*, ptrdiff_t, int);
template bool demosaicAhd(const CfaFrame<uint16_t>&, CfaRect, uint16_t*, ptrdiff_t, int);

}  // namespace vistrel
