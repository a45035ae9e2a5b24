#include <algorithm>
#include <iterator>
#include <limits>

#include "common/arith.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/edge/edge_output.h"

#define VISTREL_BODY "demosaic/edge/edge_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

// Samples of so many bits, and what is summed of them, fit signed words.
constexpr unsigned kWordBits = 12;

template <class T>
struct EdgeConversion {
  Conversion<T> c;
  EdgeSettings settings;
  const T* workEnd;
};

// A row of pixels' surroundings. What a lane can't hold lies beyond all samples too.
template <class T, class Lane>
EdgeWindow<T, Lane> windowOf(const EdgeMosaic<T>& mosaic, const MeasureRows<Lane>& measures,
                             const EdgeSettings& settings, int y) {
  static constexpr int kLargest = std::numeric_limits<Lane>::max();
  EdgeWindow<T, Lane> window{
      mosaic.template window<1>(y), measures.window(y), {}, std::min(settings.limit, kLargest)};
  std::transform(std::begin(settings.thresholds), std::end(settings.thresholds), window.thresholds,
                 [](int t) { return static_cast<Lane>(std::clamp(t, -1, kLargest)); });
  return window;
}

// False when it comes upon samples that the lanes are too short for: it is to be done anew then.
template <class T, class Lane>
bool sweepEdges(const EdgeConversion<T>& e) {
  using Types = EdgeTypes<T, Lane>;
  const EdgeKernels<T, Lane>& kernels = *VISTREL_BY_LEVEL(kEdge<Types>);
  const EdgeFrame<T> frame(e.c);
  const size_t columns = e.c.region.Wf;
  const BlockEnds<T> ends(frame, e.settings);
  EdgeMosaic<T> mosaic(frame);
  const MeasureRows<Lane> measures(columns);
  EdgeOutput<T> output(e.c, ends, e.workEnd);
  if (!mosaic || !measures || !output) return true;
  const int first = static_cast<int>(e.c.region.y0), end = first + (frame.height() + 1) / 2 * 2;
  for (int y = first - 3; y <= end + 2; ++y) {
    if (sizeof(Lane) == sizeof(T) && frame.row(y) &&
        !kernels.holdsBits(frame.row(y), columns, kWordBits))
      return false;
    mosaic.load(y, kernels.split);
    const int measured = y - 2, finished = y - 3;
    if (measured >= first - 1)
      kernels.measure[1 - frame.greenParity(measured)](mosaic.template window<2>(measured),
                                                       columns / 2, measures.row(measured));
    if (finished >= first)
      output.row(finished, [&](T* pixels, RowCopies<T>& copies) {
        kernels.pixels.of[frame.greenParity(finished)][!frame.isBlueRow(finished)](
            windowOf(mosaic, measures, e.settings, finished), columns, pixels, copies);
      });
  }
  output.finish();
  return true;
}

template <class T>
void demosaicEdges(const EdgeConversion<T>& e) {
  using Widened = std::conditional_t<sizeof(T) == 1, int16_t, int32_t>;
  const Conversion<T>& c = e.c;
  if (c.region.Wf == 0 || c.region.Hf == 0) return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  if constexpr (sizeof(T) == 2)
    if (e.settings.limit >> kWordBits == 0 && sweepEdges<T, int16_t>(e)) return;
  sweepEdges<T, Widened>(e);
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
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const ColourOutput output(nRoiWidth, nFormat, nBinning, true);
  uint8_t* const work = reinterpret_cast<uint8_t*>(g_pwBGRBuff[nIndex]);
  demosaicEdges(below(Conversion<uint8_t>{region, nBayer, nRoiX, nRoiY, 8, pSrc, nImgWidth, work,
                                          guardedLayout(region), pDst, nRoiHeight, output},
                      nIndex, settingsOf(nThreshold, 255)));
}

// Its threshold is one of bytes: 255 stands for the largest sample.
void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX,
                          uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                          const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
                          uint32_t nSrcBits) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const ColourOutput output(nRoiWidth, nSrcBits, nFormat, nLutMode, g_pwUserLUT[nIndex], nBinning,
                            nDstBits, true);
  const uint32_t largest = shl(1, nSrcBits) - 1;
  demosaicEdges(below(
      Conversion<uint16_t>{region, nBayer, nRoiX, nRoiY, nSrcBits, pSrc, nImgWidth,
                           g_pwBGRBuff[nIndex], guardedLayout(region), pDst, nRoiHeight, output},
      nIndex, settingsOf(nThreshold * largest / 255, largest)));
}

}  // namespace vistrel::core
