#include "common/level.h"
#include "common/simd.h"
#include "demosaic/conversion.h"
#include "demosaic/depth.h"
#include "demosaic/kimmel_sweep.h"
#include "platform/platform.h"

#define VISTREL_BODY "demosaic/kimmel_kernels.inl"
#include "common/each_level.inl"

#include "demosaic/kimmel_in_place.h"

namespace vistrel {

namespace {

template <class T>
void inDoubles(const Conversion<T>& c) {
  if (!isThin(c.region)) {
    const size_t noTail = size_t{c.region.Wf} + 1;
    return KimmelSweep<T, double>(c, *VISTREL_BY_LEVEL(kKimmelOfDoubles<T>), noTail).run();
  }
  spreadMosaic(c.region, c.sourceStride, c.pSrc, c.work);
  const auto pass = [&](auto fill) {
    passInPlace(c.region, c.work, [fill](const InPlacePixel<T>& p) {
      (KimmelPixel<T, double>{p, false}.*fill)();
    });
  };
  fillInOrder<T, double>(pass);
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

// The packed path: floats, in blocks of eight columns and a tail of single ones.
template <class T>
class KimmelWalk {
 public:
  // quirk: unbinned-walk. It takes the region for an unbinned one. With binning, its rows begin
  // elsewhere than the buffer's and meet each other's pixels: hence whole passes, in order.
  explicit KimmelWalk(const Conversion<T>& c)
      : m_c(c), m_walked(c.nBayer, 0, c.nRoiX, c.nRoiY, c.region.Wf / c.region.F, c.nRoiHeight),
        m_tail(m_walked.Wf & ~7u) {}

  void run() const {
    if (isBuffer()) {
      KimmelSweep<T, float>(m_c, *VISTREL_BY_LEVEL(kKimmelOfFloats<T>), m_tail).run();
      return;
    }
    spreadMosaic(m_c.region, m_c.sourceStride, m_c.pSrc, m_c.work);
    fillInOrder<T, float>([this](auto fill) { this->pass(fill); });
    m_c.output.convert(m_c.work, m_c.pDst, m_c.nRoiHeight);
  }

 private:
  // The walk is that of the buffer, and its sites are those of the mosaic.
  bool isBuffer() const {
    return m_c.region.F == 1 && !isThin(m_c.region) && (m_tail == 0 || shiftOfBlocks() == 0);
  }

  // quirk: shifted-blocks. Blocks count their columns' parity from the end of the row, and those of
  // words do so without the phase: often they take green sites for red and blue ones.
  unsigned shiftOfBlocks() const {
    return (m_walked.Wf + (sizeof(T) == 1 ? 0 : m_c.nBayer >> 1)) & 1;
  }

  template <class Fill>
  void pass(Fill fill) const {
    const size_t pitch = guardedLayout(m_walked).S;
    const auto S = static_cast<ptrdiff_t>(m_c.layout.S);
    for (uint32_t k = 0; k < m_walked.Hf; ++k)
      for (uint32_t i = 0; i < m_walked.Wf; ++i) {
        const bool inBlock = i < m_tail;
        const unsigned r = (m_walked.r0 + k) & 1;
        const unsigned c = (m_walked.c0 + i + (inBlock ? shiftOfBlocks() : 0)) & 1;
        T* const pixel = m_c.imageRow(0) + k * pitch + size_t{3} * i;
        (KimmelPixel<T, float>{{pixel, S, r, c}, inBlock}.*fill)();
      }
  }

  const Conversion<T>& m_c;
  Region m_walked;
  uint32_t m_tail;
};

template <class T>
void packed(const Conversion<T>& c) {
  KimmelWalk<T>(c).run();
}

template <class T>
void kimmel(const Conversion<T>& c) {
  OS_IsSSE() ? packed(c) : inDoubles(c);
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC(ImageColorHueKimmel, kimmel)
VISTREL_DEFINE_DEMOSAIC(vec_ImageColorHueKimmel, packed)

}  // namespace vistrel
