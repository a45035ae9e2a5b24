#include "cfa/near_rows.h"

#include "cfa/border.h"
#include "common/simd.h"
#include "common/stream.h"

#define VISTREL_BODY "cfa/near_rows.inl"
#include "common/each_level.inl"

namespace vistrel {

constexpr int kReach = 2;

template <class T>
NearRows<T>::NearRows(const CfaFrame<T>& frame, CfaRect srcRoi, Level level)
    : m_frame(frame), m_roi(srcRoi), m_x0(std::max(srcRoi.x, kReach)),
      m_x1(std::min(srcRoi.x + srcRoi.width, frame.size.width - kReach)),
      m_loaded(std::max(srcRoi.y, kReach) - kReach), m_kernels(*VISTREL_AT_LEVEL(level, kNear<T>)),
      m_ring(2 * kReach + 1, 2, static_cast<size_t>(std::max(m_x1 - m_x0, 0)) + 2 * kReach) {}

// Columns from kReach before the interior's first, so that its first is column 0 of element 1.
template <class T>
void NearRows<T>::load(int y) {
  const size_t columns = static_cast<size_t>(m_x1 - m_x0) + 2 * kReach;
  const T* source = m_frame.samples + y * m_frame.step + m_x0 - kReach;
  T* even = m_ring.half(unsigned(y), 0);
  T* odd = m_ring.half(unsigned(y), 1);
  m_kernels.split(source, columns / 2, even, odd);
  if (columns & 1) even[columns / 2] = source[columns - 1];
  if (y + 1 < m_frame.size.height) prefetchRow(source + m_frame.step, columns * sizeof(T));
  const T mask = static_cast<T>(m_frame.rounding.mask);
  if (mask == T(~T{0})) return;
  for (T* half : {even, odd}) m_kernels.keepBits(half, (columns + 1) / 2, mask);
}

template <class T>
void NearRows<T>::interior(int y, T* pixels, RowCopies<T>& copies) const {
  HalfRowWindow<T, kReach> window;
  for (int dy = -kReach; dy <= kReach; ++dy)
    for (unsigned parity = 0; parity < 2; ++parity)
      window.half[dy + kReach][parity] = m_ring.half(unsigned(y + dy), parity) + kReach / 2;
  const unsigned greenParity = m_frame.isGreen(m_x0, y) ? 0 : 1;
  // Red is stored first here, so a row of red sites stores its own colour as others do blue.
  m_kernels.pixels[m_frame.rounding.four]->of[greenParity][!m_frame.isRedRow(y)](
      window, static_cast<size_t>(m_x1 - m_x0), pixels, copies);
}

// The border comes first: then all that lies before a pixel is there when it is made.
template <class T>
void NearRows<T>::row(int y, T* pixels, RowCopies<T>& copies) {
  const int frameRow = m_roi.y + y;
  ownBayerBorder(m_frame, {m_roi.x, frameRow, m_roi.width, 1}, pixels, 0);
  const size_t end = 3 * static_cast<size_t>(m_roi.width);
  if (m_x0 >= m_x1 || frameRow < kReach || frameRow >= m_frame.size.height - kReach) {
    if (copies.plain) std::copy(pixels, pixels + end, copies.plain);
    return;
  }
  for (; m_loaded <= frameRow + kReach; ++m_loaded) load(m_loaded);
  const size_t from = 3 * static_cast<size_t>(m_x0 - m_roi.x);
  if (copies.plain) {
    const size_t to = 3 * static_cast<size_t>(m_x1 - m_roi.x);
    std::copy(pixels, pixels + from, copies.plain);
    std::copy(pixels + to, pixels + end, copies.plain + to);
    copies.plain += from;
  }
  interior(frameRow, pixels + from, copies);
}

template class NearRows<uint8_t>;
template class NearRows<uint16_t>;

}  // namespace vistrel
