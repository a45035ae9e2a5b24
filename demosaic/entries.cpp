// The demosaic functions: they run the engine between the caller's frame and the stream's work
// buffer.
#include "demosaic/algorithms.h"
#include "demosaic/demosaic.h"
#include "demosaic/edge/edge_image.h"
#include "demosaic/primitive.h"
#include "demosaic/primitive_call.h"
#include "demosaic/through_buffer.h"
#include "demosaic/work_image.h"
#include "streams/registry.h"
#include "vistrel/platform.h"

namespace vistrel::core {

namespace {

using LayoutOf = WorkLayout(const Region& region);

// Calls convert(c) with the Conversion that the arguments of a demosaic function describe. Its
// image has the layout that layoutOf returns.
template <class Convert>
void withConversion(LayoutOf* layoutOf, Convert convert, uint32_t nIndex, uint32_t nImgWidth,
                    uint32_t nBayer, uint32_t nBinning, uint32_t nFormat, uint32_t nRoiX,
                    uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                    uint8_t* pDst) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const WorkLayout layout = layoutOf(region);
  const ColourOutput output(nRoiWidth, nFormat, nBinning, layout.side != 0);
  uint8_t* const work = reinterpret_cast<uint8_t*>(g_pwBGRBuff[nIndex]);
  convert(Conversion<uint8_t>{region, nBayer, nRoiX, nRoiY, 8, pSrc, nImgWidth, work, layout, pDst,
                              nRoiHeight, output});
}
template <class Convert>
void withConversion(LayoutOf* layoutOf, Convert convert, uint32_t nIndex, uint32_t nImgWidth,
                    uint32_t nBayer, uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode,
                    uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                    const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits, uint32_t nSrcBits) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const WorkLayout layout = layoutOf(region);
  const ColourOutput output(nRoiWidth, nSrcBits, nFormat, nLutMode, g_pwUserLUT[nIndex], nBinning,
                            nDstBits, layout.side != 0);
  convert(Conversion<uint16_t>{region, nBayer, nRoiX, nRoiY, nSrcBits, pSrc, nImgWidth,
                               g_pwBGRBuff[nIndex], layout, pDst, nRoiHeight, output});
}

template <class T>
void run(MakeDemosaic<T>* make, const DemosaicJob<T>& job, Arena& arena) {
  if (Demosaic<T>* const demosaic = make(job, arena)) demosaic->advance(demosaic->last());
}

template <class T>
void convertByPackedKimmel(const Conversion<T>& c) {
  const DemosaicAlgorithm<T> algorithm = packedKimmel<T>();
  if (packedKimmelSweeps(c))
    sweepThroughBuffer(c, algorithm.make);
  else
    algorithm.inPlace(c);
}

template <class T>
void convertByKimmel(const Conversion<T>& c) {
  if (OS_IsSSE())
    convertByPackedKimmel(c);
  else
    convertThroughBuffer(c, kimmel<T>());
}

// Converts whole pairs of rows, from the region's first row on.
// quirk: edge-phase. The region's columns count from its own first one, wherever that lies.
template <class T>
void convertByEdge(const Conversion<T>& c, uint32_t nThreshold, const T* workEnd) {
  const int Wf = int(c.region.Wf), Hf = int(c.region.Hf), first = int(c.region.y0);
  if (Wf == 0 || Hf == 0)
    return c.output.convert(c.work + kGuard * c.layout.S, c.pDst, c.nRoiHeight);
  PlainRows<T> source(c.pSrc + c.region.x0, ptrdiff_t(c.sourceStride), Hf);
  withArena([&](Arena& arena) {
    EdgeImage<T> image(c, workEnd, arena);
    run<T>(edge<T>().make,
           {.source = source,
            .mosaic = Mosaic::ofPhase(c.nBayer),
            .columns = Wf,
            .height = Hf,
            .roi = {0, first, Wf, Hf},
            .rows = {first, first + (Hf + 1) / 2 * 2},
            .image = image,
            .bits = c.nSrcBits,
            .threshold = nThreshold,
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
  const bool isWhole = call.roi.width == int(c.region.Wf) && call.roi.height == int(c.region.Hf);
  PlainImage<T> part(c.imageRow(0), ptrdiff_t(c.layout.S));
  withArena([&](Arena& arena) {
    WorkImage<T> whole(c, arena);
    ImageSink<T>& image = isWhole ? static_cast<ImageSink<T>&>(whole) : part;
    run(make, call.job(image), arena);
    if (arena.counts()) return;
    isWhole ? whole.finish() : c.output.convert(c.work, c.pDst, c.nRoiHeight);
  });
}

template <class T>
void convertByNear(const Conversion<T>& c) {
  convertByPrimitive(c, near<T>().make, kSmallestNear);
}
template <class T>
void convertByAhd(const Conversion<T>& c) {
  convertByPrimitive(c, ahd<T>().make, kSmallestAhd);
}

}  // namespace

// Defines both overloads of `name`, which pass their Conversion<T> to `convert`.
#define VISTREL_DEMOSAIC_ENTRY(name, layoutOf, convert)                                          \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,             \
            uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,                \
            uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {                           \
    using T = uint8_t;                                                                           \
    withConversion(                                                                              \
        layoutOf, [&](const Conversion<T>& c) { convert; }, nIndex, nImgWidth, nBayer, nBinning, \
        nFormat, nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst);                               \
  }                                                                                              \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,             \
            uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,                 \
            uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst,        \
            uint32_t nDstBits, uint32_t nSrcBits) {                                              \
    using T = uint16_t;                                                                          \
    withConversion(                                                                              \
        layoutOf, [&](const Conversion<T>& c) { convert; }, nIndex, nImgWidth, nBayer, nBinning, \
        nFormat, nLutMode, nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits); \
  }

VISTREL_DEMOSAIC_ENTRY(ImageColorBilinear, guardedLayout, convertThroughBuffer(c, bilinear<T>()))
VISTREL_DEMOSAIC_ENTRY(ImageColorNearNeighbor, compactLayout, convertByNear(c))
VISTREL_DEMOSAIC_ENTRY(ImageColorGradientLaroche, guardedLayout,
                       convertThroughBuffer(c, laroche<T>()))
VISTREL_DEMOSAIC_ENTRY(ImageColorGradientHamilton, guardedLayout,
                       convertThroughBuffer(c, hamilton<T>()))
VISTREL_DEMOSAIC_ENTRY(ImageColorVariableGradients, guardedLayout,
                       convertThroughBuffer(c, variableGradients<T>()))
VISTREL_DEMOSAIC_ENTRY(ImageColorHueCok, guardedLayout, convertThroughBuffer(c, cok<T>()))
VISTREL_DEMOSAIC_ENTRY(ImageColorHueKimmel, guardedLayout, convertByKimmel(c))
VISTREL_DEMOSAIC_ENTRY(vec_ImageColorHueKimmel, guardedLayout, convertByPackedKimmel(c))
VISTREL_DEMOSAIC_ENTRY(ImageColorPixelGrouping, guardedLayout,
                       convertThroughBuffer(c, pixelGrouping<T>()))
VISTREL_DEMOSAIC_ENTRY(demosaicAhd, compactLayout, convertByAhd(c))

void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY,
                          uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                          uint8_t* pDst) {
  const auto convert = [=](const Conversion<uint8_t>& c) {
    convertByEdge(c, nThreshold, c.work + g_anBGRBytes[nIndex]);
  };
  withConversion(guardedLayout, convert, nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY,
                 nRoiWidth, nRoiHeight, pSrc, pDst);
}

void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX,
                          uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                          const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
                          uint32_t nSrcBits) {
  const auto convert = [=](const Conversion<uint16_t>& c) {
    convertByEdge(c, nThreshold, c.work + g_anBGRBytes[nIndex] / sizeof(uint16_t));
  };
  withConversion(guardedLayout, convert, nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode,
                 nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
}

}  // namespace vistrel::core

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nRoiX, unsigned nRoiY, unsigned nRoiWidth,
                           unsigned nRoiHeight, unsigned char* pSrc, unsigned char* pDst) {
  vistrel::core::demosaicAhd(nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY, nRoiWidth,
                             nRoiHeight, pSrc, pDst);
}

void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nLutMode, unsigned nRoiX, unsigned nRoiY,
                           unsigned nRoiWidth, unsigned nRoiHeight, unsigned short* pSrc,
                           unsigned char* pDst, unsigned nDstBits, unsigned nSrcBits) {
  vistrel::core::demosaicAhd(nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode, nRoiX, nRoiY,
                             nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
}
