#include <algorithm>
#include <iterator>
#include <limits>

#include "common/arith.h"
#include "common/rows/sweep.h"
#include "cpu/level.h"
#include "demosaic/edge/edge_output.h"

#define VISTREL_BODY "demosaic/edge/edge_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
struct EdgeConversion {
  Conversion<T> c;
  EdgeSettings settings;
  const T* workEnd;
};

template <class T>
class EdgeSweep {
 public:
  explicit EdgeSweep(const EdgeConversion<T>& e)
      : settings_(e.settings), kernels_(*VISTREL_BY_LEVEL(kEdge<T>)), frame_(e.c),
        columns_(e.c.region.Wf), ring_(frame_), measures_(columns_), ends_(frame_, e.settings),
        output_(e.c, ends_, e.workEnd), first_(static_cast<int>(e.c.region.y0)) {}

  // Whole pairs of rows.
  void run() {
    if (!ring_ || !measures_ || !output_) return;
    const int end = first_ + (frame_.height() + 1) / 2 * 2;
    sweep({first_, end}, kUnbounded, stage(0, [&](int y) { ring_.load(y, kernels_); }),
          stage(2,
                [&](int y) { isNarrow(y - 2) ? measureAs<int16_t>(y) : measureAs<Widened<T>>(y); }),
          stage(1, [&](int y) { isNarrow(y - 3) ? fillAs<int16_t>(y) : fillAs<Widened<T>>(y); }));
    output_.finish();
  }

 private:
  // Whether narrow lanes hold all that is summed of the rows from y on.
  bool isNarrow(int y) const {
    return isTwelveBits(settings_.limit) && ring_.depths().areTwelveBitsFrom(y);
  }

  template <class Lane>
  void measureAs(int y) {
    kernels_.template of<Lane>().measure[frame_.mosaic().colourParity(y)](
        ring_.template window<2>(y), columns_ / 2, measures_.template made<Lane>(y));
  }

  template <class Lane>
  void fillAs(int y) {
    RowSink<T> sink = output_.row(y);
    kernels_.template of<Lane>().pixels.ofRow(frame_.mosaic(), y)(surroundings<Lane>(y), columns_,
                                                                  sink);
    output_.finish(y, sink);
  }

  // What lanes can't hold is above all samples anyway.
  template <class Lane>
  EdgeWindow<T, Lane> surroundings(int y) {
    static constexpr int kLargest = std::numeric_limits<Lane>::max();
    EdgeWindow<T, Lane> window{ring_.template window<1>(y),
                               measures_.template window<Lane>(y),
                               {},
                               std::min(settings_.limit, kLargest)};
    std::transform(std::begin(settings_.thresholds), std::end(settings_.thresholds),
                   window.thresholds,
                   [](int t) { return static_cast<Lane>(std::clamp(t, -1, kLargest)); });
    return window;
  }

  const EdgeSettings settings_;
  const EdgeKernels<T>& kernels_;
  const EdgeFrame<T> frame_;
  size_t columns_;
  EdgeMosaicRing<T> ring_;
  MeasureRing<T> measures_;
  const BlockEnds<T> ends_;
  EdgeOutput<T> output_;
  int first_;
};

template <class T>
void demosaicEdges(const EdgeConversion<T>& e) {
  const Conversion<T>& c = e.c;
  if (c.region.Wf == 0 || c.region.Hf == 0) return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  EdgeSweep<T>(e).run();
}

// The image lies two rows lower in the work buffer than that of the other algorithms.
template <class T>
EdgeConversion<T> below(Conversion<T> c, unsigned nIndex, const EdgeSettings& settings) {
  const T* const workEnd = c.work + g_anBGRBytes[nIndex] / sizeof(T);
  c.work += 2 * c.layout.S;
  return {c, settings, workEnd};
}

// Four falling steps from the largest threshold down.
constexpr EdgeSettings settingsOf(uint32_t threshold, uint32_t limit) {
  return {{static_cast<int>(threshold), static_cast<int>((3 * threshold) >> 2),
           static_cast<int>(threshold >> 1), static_cast<int>(threshold >> 2)},
          static_cast<int>(limit)};
}

}  // namespace

void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY,
                          uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                          uint8_t* pDst) {
  const auto convert = [=](const Conversion<uint8_t>& c) {
    demosaicEdges(below(c, nIndex, settingsOf(nThreshold, 255)));
  };
  withConversion(guardedLayout, convert, nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY,
                 nRoiWidth, nRoiHeight, pSrc, pDst);
}

// Its threshold is one of bytes: 255 stands for the largest sample.
void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX,
                          uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                          const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
                          uint32_t nSrcBits) {
  const uint32_t largest = shl(1, nSrcBits) - 1;
  const auto convert = [=](const Conversion<uint16_t>& c) {
    demosaicEdges(below(c, nIndex, settingsOf(nThreshold * largest / 255, largest)));
  };
  withConversion(guardedLayout, convert, nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode,
                 nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
}

}  // namespace vistrel::core
