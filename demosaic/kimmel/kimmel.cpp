#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"
#include "demosaic/kimmel/kimmel_sweep.h"

#define VISTREL_BODY "demosaic/kimmel/kimmel_rows-inl.h"
#include "common/simd/each_level.h"

#include "demosaic/kimmel/kimmel_in_place.h"

namespace vistrel::core {

namespace {

template <class T>
void kimmelInPlace(const Conversion<T>& c) {
  scatterMosaic(c.region, c.sourceStride, c.pSrc, c.work);
  const auto pass = [&](auto fill) {
    passInPlace(c.region, c.work, [fill](const InPlacePixel<T>& p) {
      (KimmelPixel<T, double>{p, false}.*fill)();
    });
  };
  fillInOrder<T, double>(pass);
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

template <class T>
class KimmelDoubles : public KimmelSweep<T, double> {
 public:
  KimmelDoubles(const DemosaicJob<T>& job, Arena& arena)
      : KimmelSweep<T, double>(job, *VISTREL_BY_LEVEL(kKimmelDoubleKernels<T>), kNoTail, arena) {}

 private:
  static constexpr size_t kNoTail = SIZE_MAX;
};

// The number of columns that the path in floats processes in blocks of eight; the tail follows
// them.
constexpr uint32_t inBlocks(uint32_t columns) { return columns & ~7u; }

template <class T>
class KimmelFloats : public KimmelSweep<T, float> {
 public:
  KimmelFloats(const DemosaicJob<T>& job, Arena& arena)
      : KimmelSweep<T, float>(job, *VISTREL_BY_LEVEL(kKimmelFloatKernels<T>),
                              inBlocks(static_cast<uint32_t>(job.columns)), arena) {}
};

// The path in floats, in blocks of eight columns and a tail of single columns.
template <class T>
class KimmelWalk {
 public:
  // quirk: unbinned-walk. It treats the region as unbinned. With binning, its rows begin at other
  // places than the buffer's and touch each other's pixels, so whole passes must run in order.
  explicit KimmelWalk(const Conversion<T>& c)
      : c_(c), walked_(c.nBayer, 0, c.nRoiX, c.nRoiY, c.region.Wf / c.region.F, c.nRoiHeight),
        tail_(inBlocks(walked_.Wf)) {}

  // Whether the walk visits the buffer's own rows, and its sites are those of the mosaic: then a
  // sweep does the same.
  bool isSweep() const {
    return c_.region.F == 1 && !isDegenerate(c_.region) &&
           (tail_ == 0 || blockMosaic() == walked_.mosaic);
  }

  void run() const {
    scatterMosaic(c_.region, c_.sourceStride, c_.pSrc, c_.work);
    fillInOrder<T, float>([this](auto fill) { this->pass(fill); });
    c_.output.convert(c_.work, c_.pDst, c_.nRoiHeight);
  }

 private:
  // quirk: shifted-blocks. Blocks count the parity of their columns from the end of the row, and
  // for 16-bit samples without the phase: they often take green sites for red and blue ones.
  Mosaic blockMosaic() const {
    const unsigned phase = sizeof(T) == 1 ? c_.nBayer : c_.nBayer & ~kColumnShift;
    return Mosaic::ofPhase(phase).from(walked_.x0 + walked_.Wf, walked_.y0);
  }

  template <class Fill>
  void pass(Fill fill) const {
    const size_t pitch = guardedLayout(walked_).S;
    const auto S = static_cast<ptrdiff_t>(c_.layout.S);
    const Mosaic blocks = blockMosaic();
    for (uint32_t k = 0; k < walked_.Hf; ++k)
      for (uint32_t i = 0; i < walked_.Wf; ++i) {
        const bool inBlock = i < tail_;
        const Mosaic mosaic = inBlock ? blocks : walked_.mosaic;
        T* const pixel = c_.imageRow(0) + k * pitch + size_t{3} * i;
        (KimmelPixel<T, float>{{pixel, S, mosaic.from(i, k)}, inBlock}.*fill)();
      }
  }

  const Conversion<T>& c_;
  Region walked_;
  uint32_t tail_;
};

template <class T>
void walk(const Conversion<T>& c) {
  KimmelWalk<T>(c).run();
}

}  // namespace

template <class T>
DemosaicAlgorithm<T> kimmel() {
  return {makeDemosaic<T, KimmelDoubles<T>>, kimmelInPlace<T>};
}
VISTREL_DEMOSAIC_ALGORITHM(kimmel);

template <class T>
DemosaicAlgorithm<T> floatKimmel() {
  return {makeDemosaic<T, KimmelFloats<T>>, walk<T>};
}
VISTREL_DEMOSAIC_ALGORITHM(floatKimmel);

template <class T>
bool floatKimmelSweeps(const Conversion<T>& c) {
  return KimmelWalk<T>(c).isSweep();
}
template bool floatKimmelSweeps(const Conversion<uint8_t>& c);
template bool floatKimmelSweeps(const Conversion<uint16_t>& c);

}  // namespace vistrel::core
