#include "cfa/near_rows.h"

#include "cfa/border.h"
#include "common/level.h"
#include "common/simd.h"

#define VISTREL_BODY "cfa/near_rows.inl"
#include "common/each_level.inl"

namespace vistrel {

namespace {

constexpr int kReach = 2;

void border(const CfaFrame<uint8_t>& frame, CfaRect roi, uint8_t* pixels) {
  ownBayerBorder_8u(frame, roi, pixels, 0);
}
void border(const CfaFrame<uint16_t>& frame, CfaRect roi, uint16_t* pixels) {
  ownBayerBorder_16u(frame, roi, pixels, 0);
}

template <class T>
void keepBits(T* half, size_t n, uint32_t mask) {
  for (size_t k = 0; k < n; ++k) half[k] = static_cast<T>(half[k] & mask);
}

}  // namespace

template <class T>
NearRows<T>::NearRows(const CfaFrame<T>& frame, CfaRect srcRoi)
    : m_frame(frame), m_roi(srcRoi), m_x0(std::max(srcRoi.x, kReach)),
      m_x1(std::min(srcRoi.x + srcRoi.width, frame.size.width - kReach)),
      m_loaded(std::max(srcRoi.y, kReach) - kReach), m_kernels(*VISTREL_BY_LEVEL(kNear<T>)),
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
  if (m_frame.rounding.mask < T(~T{0})) {
    keepBits(even, (columns + 1) / 2, m_frame.rounding.mask);
    keepBits(odd, columns / 2, m_frame.rounding.mask);
  }
}

template <class T>
void NearRows<T>::interior(int y, T* pixels, T* copy) const {
  HalfRowWindow<T, kReach> window;
  for (int dy = -kReach; dy <= kReach; ++dy)
    for (unsigned parity = 0; parity < 2; ++parity)
      window.half[dy + kReach][parity] = m_ring.half(unsigned(y + dy), parity) + kReach / 2;
  const unsigned greenParity = m_frame.isGreen(m_x0, y) ? 0 : 1;
  const size_t first = 3 * static_cast<size_t>(m_x0 - m_roi.x);
  RowCopies<T> copies;
  copies.plain = copy ? copy + first : nullptr;
  // Red is stored first here, so a row of red sites stores its own colour as others do blue.
  m_kernels.pixels[m_frame.rounding.four]->of[greenParity][!m_frame.isRedRow(y)](
      window, static_cast<size_t>(m_x1 - m_x0), pixels + first, copies);
}

template <class T>
void NearRows<T>::row(int y, T* pixels, T* copy) {
  const int frameRow = m_roi.y + y;
  const CfaRect only{m_roi.x, frameRow, m_roi.width, 1};
  if (m_x0 < m_x1 && frameRow >= kReach && frameRow < m_frame.size.height - kReach) {
    for (; m_loaded <= frameRow + kReach; ++m_loaded) load(m_loaded);
    interior(frameRow, pixels, copy);
  }
  border(m_frame, only, pixels);
  if (copy) border(m_frame, only, copy);
}

template class NearRows<uint8_t>;
template class NearRows<uint16_t>;

}  // namespace vistrel
