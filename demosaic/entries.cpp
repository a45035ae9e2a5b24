// Runs the engine between the caller's frame and the stream's work buffer.
#include "demosaic/demosaic.h"

#include "demosaic/edge/edge_image.h"
#include "demosaic/primitive_call.h"
#include "demosaic/through_buffer.h"
#include "demosaic/work_image.h"
#include "streams/registry.h"
#include "vistrel/image_functions.h"
#include "vistrel/platform.h"

namespace vistrel::core {

namespace {

template <class T>
void run(MakeDemosaic<T>* make, const DemosaicJob<T>& job, Arena& arena) {
  if (RowProcess<T>* const demosaic = make(job, arena)) demosaic->advance(demosaic->last());
}

template <class T>
void convertByFloatKimmel(const Conversion<T>& c) {
  const DemosaicAlgorithm<T> algorithm = floatKimmel<T>();
  if (floatKimmelSweeps(c))
    sweepThroughBuffer(c, algorithm.make);
  else
    algorithm.inPlace(c);
}

// Converts whole pairs of rows, from the region's first row on.
// quirk: edge-phase. The region's columns count from its own first one, wherever that lies.
template <class T>
void convertByEdge(const Conversion<T>& c) {
  const auto Wf = static_cast<int>(c.region.Wf), Hf = static_cast<int>(c.region.Hf),
             first = static_cast<int>(c.region.y0);
  if (Wf == 0 || Hf == 0)
    return c.output.convert(c.work + kGuard * c.layout.S, c.pDst, c.nRoiHeight);
  PlainRows<T> source(c.pSrc + c.region.x0, static_cast<ptrdiff_t>(c.sourceStride), Hf);
  withArena([&](Arena& arena) {
    EdgeImage<T> image(c, arena);
    run<T>(edge<T>().make,
           {.source = source,
            .mosaic = Mosaic::ofPhase(c.nBayer),
            .columns = Wf,
            .height = Hf,
            .roi = {0, first, Wf, Hf},
            .rows = {first, first + (Hf + 1) / 2 * 2},
            .image = &image,
            .bits = c.nSrcBits,
            .threshold = c.threshold,
            .margins = &image},
           arena);
    if (!arena.counts()) image.finish();
  });
}

// The output can follow the rows if they are the whole image.
template <class T>
void convertByPrimitive(const Conversion<T>& c, MakeDemosaic<T>* make, int smallestSide) {
  PrimitiveCall<T> call(c);
  if (call.isRejected(smallestSide)) return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  const bool isWhole = call.roi.width == static_cast<int>(c.region.Wf) &&
                       call.roi.height == static_cast<int>(c.region.Hf);
  PlainImage<T> part(c.imageRow(0), static_cast<ptrdiff_t>(c.layout.S));
  withArena([&](Arena& arena) {
    WorkImage<T> whole(c, arena);
    ImageSink<T>& image = isWhole ? static_cast<ImageSink<T>&>(whole) : part;
    run(make, call.job(image), arena);
    if (arena.counts()) return;
    isWhole ? whole.finish() : c.output.convert(c.work, c.pDst, c.nRoiHeight);
  });
}

template <class T>
void convertBy(const AlgorithmRow& algorithm, const Conversion<T>& c) {
  if (!algorithm.isGuarded)
    convertByPrimitive(c, algorithm.of<T>().make, static_cast<int>(algorithm.minSize));
  else if (algorithm.code == DM_EDGE_EX)
    convertByEdge(c);
  else if (algorithm.code == DM_HUE_KIMMEL && OS_IsSSE())
    convertByFloatKimmel(c);
  else
    convertThroughBuffer(c, algorithm.of<T>());
}

WorkLayout layoutOf(const AlgorithmRow& algorithm, const Region& region) {
  return algorithm.isGuarded ? guardedLayout(region) : compactLayout(region);
}

}  // namespace

void demosaic(const AlgorithmRow& algorithm, uint32_t nIndex, uint32_t nThreshold,
              uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nFormat,
              uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
              const uint8_t* pSrc, uint8_t* pDst) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const ColourOutput output(nRoiWidth, nFormat, nBinning, algorithm.isGuarded);
  uint8_t* const work = reinterpret_cast<uint8_t*>(g_pwBGRBuff[nIndex]);
  convertBy<uint8_t>(algorithm, {region, nBayer, nRoiX, nRoiY, 8, pSrc, nImgWidth, work,
                                 layoutOf(algorithm, region), pDst, nRoiHeight, output, nThreshold,
                                 work + g_anBGRBytes[nIndex]});
}

void demosaic(const AlgorithmRow& algorithm, uint32_t nIndex, uint32_t nThreshold,
              uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nFormat,
              uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
              uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
              uint32_t nSrcBits) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const ColourOutput output(nRoiWidth, nSrcBits, nFormat, nLutMode, g_pwUserLUT[nIndex], nBinning,
                            nDstBits, algorithm.isGuarded);
  uint16_t* const work = g_pwBGRBuff[nIndex];
  convertBy<uint16_t>(algorithm, {region, nBayer, nRoiX, nRoiY, nSrcBits, pSrc, nImgWidth, work,
                                  layoutOf(algorithm, region), pDst, nRoiHeight, output, nThreshold,
                                  work + g_anBGRBytes[nIndex] / sizeof(uint16_t)});
}

}  // namespace vistrel::core

using namespace vistrel::core;

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nRoiX, unsigned nRoiY, unsigned nRoiWidth,
                           unsigned nRoiHeight, unsigned char* pSrc, unsigned char* pDst) {
  demosaic(*findAlgorithm(kAhdCode), nIndex, 0, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY,
           nRoiWidth, nRoiHeight, pSrc, pDst);
}

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nLutMode, unsigned nRoiX, unsigned nRoiY,
                           unsigned nRoiWidth, unsigned nRoiHeight, unsigned short* pSrc,
                           unsigned char* pDst, unsigned nDstBits, unsigned nSrcBits) {
  demosaic(*findAlgorithm(kAhdCode), nIndex, 0, nImgWidth, nBayer, nBinning, nFormat, nLutMode,
           nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
}
