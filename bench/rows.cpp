#include "bench/rows.h"

#include "bench/filter.h"
#include "bench/peers.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::bench {

namespace {

constexpr uint32_t kTopWindow = 0, kUserTable = 10;  // nLutMode

constexpr Conversion bilinear(unsigned depth, uint32_t nFormat, unsigned factor = 1) {
  return {"bilinear", DM_BILINEAR, depth, nFormat, factor, kTopWindow};
}

// 10-bit samples: higher values would be clamped.
constexpr Conversion colour(const char* name, uint32_t nAlgorithm, unsigned depth) {
  return {name, nAlgorithm, depth, IMG_FMT_BGR24, 1, kTopWindow, 10};
}

constexpr Conversion mono(unsigned depth, unsigned factor, uint32_t nLutMode = kTopWindow) {
  return {"mono", DM_BILINEAR, depth, IMG_FMT_MONO8, factor, nLutMode};
}

#if VISTREL_BENCH_LIBRAW
Row homogeneity(unsigned depth, Target target) {
  return {
      {"ahd", 0, depth, IMG_FMT_BGR24, 1, kTopWindow}, {"LibRaw AHD", librawAhd}, target, makeAhd};
}

Row kimmelInDoubles(unsigned depth) {
  return {colour("kimmel-doubles", DM_HUE_KIMMEL, depth),
          {"LibRaw AHD", librawAhd},
          {2.5, 4, 0},
          makeWithoutPacked};
}
#endif

#if VISTREL_BENCH_OPENCV
Row filter(const char* name, uint32_t which, unsigned depth, uint32_t nFormat, Target target) {
  const Peer peer{which == kBox ? "OpenCV boxFilter" : "OpenCV filter2D", openCvFilter};
  return {{name, which, depth, nFormat, 1, kTopWindow, 10}, peer, target, makeFilter};
}
#endif

}  // namespace

const std::vector<Row>& rows() {
  static const std::vector<Row> table = {
#if VISTREL_BENCH_OPENCV
    {bilinear(8, IMG_FMT_BGR24), {"OpenCV bilinear", openCvBilinear}, {1.0, 1.25, 2.0}},
    {bilinear(8, IMG_FMT_ARGB32), {"OpenCV bilinear BGRA", openCvBilinearBgra}, {0.8, 1.0, 0}},
    {bilinear(8, IMG_FMT_GRAY8), {"OpenCV bilinear, gray", openCvBilinearGray}, {0.9, 1.3, 0}},
    {bilinear(8, IMG_FMT_BGR24, 2), {"OpenCV bilinear, AREA", openCvBilinearArea}, {1.3, 1.8, 0}},
    {bilinear(8, IMG_FMT_BGR24, 3), {"OpenCV bilinear, AREA", openCvBilinearArea}, {2.5, 3.5, 0}},
    {bilinear(8, IMG_FMT_BGR24, 4), {"OpenCV bilinear, AREA", openCvBilinearArea}, {2.5, 3.5, 0}},
#endif
#if VISTREL_BENCH_SWSCALE
    {bilinear(16, IMG_FMT_BGR24), {"libswscale bayer16", swscaleBilinear}, {1.3, 1.5, 0}},
#endif
#if VISTREL_BENCH_DC1394
    {bilinear(16, IMG_FMT_BGR48), {"libdc1394 bilinear", dc1394Bilinear}, {1.1, 1.3, 0}},
#endif
#if VISTREL_BENCH_DC1394
    {colour("edge", DM_EDGE_EX | 100 << 8, 8),
     {"libdc1394 EDGESENSE", dc1394EdgeSense},
     {1.3, 2, 0}},
    {colour("edge", DM_EDGE_EX | 100 << 8, 16),
     {"libdc1394 EDGESENSE", dc1394EdgeSense},
     {1.3, 2, 0}},
    {colour("laroche", DM_GRADIENT_LAROCHE, 8),
     {"libdc1394 HQLINEAR", dc1394HqLinear},
     {3, 4.5, 0}},
    {colour("laroche", DM_GRADIENT_LAROCHE, 16),
     {"libdc1394 HQLINEAR", dc1394HqLinear},
     {2.5, 3.5, 0}},
    {colour("hamilton", DM_GRADIENT_HAMILTON, 8),
     {"libdc1394 HQLINEAR", dc1394HqLinear},
     {2.5, 4, 0}},
    {colour("hamilton", DM_GRADIENT_HAMILTON, 16),
     {"libdc1394 HQLINEAR", dc1394HqLinear},
     {2, 3, 0}},
    {colour("cok", DM_HUE_COK, 8), {"libdc1394 EDGESENSE", dc1394EdgeSense}, {1.3, 2, 0}},
    {colour("cok", DM_HUE_COK, 16), {"libdc1394 EDGESENSE", dc1394EdgeSense}, {1.3, 2, 0}},
#endif
#if VISTREL_BENCH_LIBRAW
    {colour("grouping", DM_PIXEL_GROUPING, 8), {"LibRaw PPG", librawPixelGrouping}, {4, 8, 0}},
    {colour("grouping", DM_PIXEL_GROUPING, 16), {"LibRaw PPG", librawPixelGrouping}, {4, 8, 0}},
    {colour("kimmel", DM_HUE_KIMMEL, 8), {"LibRaw PPG", librawPixelGrouping}, {3, 4.5, 0}},
    kimmelInDoubles(8),
    kimmelInDoubles(16),
    homogeneity(8, {6, 12, 0}),
    homogeneity(16, {4, 8, 0}),
#endif
#if VISTREL_BENCH_OPENCV
    {colour("variable-gradients", DM_VARIABLE_GRADIENTS, 8),
     {"OpenCV VNG", openCvVariableGradients},
     {1.5, 2.5, 0}},
#endif
#if VISTREL_BENCH_DC1394
    {colour("variable-gradients", DM_VARIABLE_GRADIENTS, 16),
     {"libdc1394 VNG", dc1394VariableGradients},
     {15, 25, 0}},
#endif
#if VISTREL_BENCH_OPENCV
    {colour("near", DM_NEAR_NEIGHBOR, 8), {"OpenCV edge-aware", openCvEdgeAware}, {1.2, 1.5, 0}},
    {colour("near", DM_NEAR_NEIGHBOR, 16),
     {"OpenCV edge-aware 16u", openCvEdgeAware},
     {2.5, 3.5, 0}},
    {mono(8, 1), {"OpenCV copyTo", openCvCopy}, {0.95, 1.0, 0}},
    {mono(8, 2), {"OpenCV AREA", openCvArea}, {0.9, 1.1, 0}},
    {mono(8, 3), {"OpenCV AREA", openCvArea}, {3, 5, 0}},
    {mono(8, 4), {"OpenCV AREA", openCvArea}, {5, 8, 0}},
    {mono(16, 1), {"OpenCV convertTo", openCvConvert}, {1.1, 1.3, 0}},
    {mono(16, 2), {"OpenCV AREA, convertTo", openCvAreaConvert}, {1.3, 1.7, 0}},
    {mono(16, 1, kUserTable), {"OpenCV LUT 8u", openCvTable}, {0.8, 0.9, 0}},
    filter("gauss", kGauss, 8, IMG_FMT_MONO8, {1.5, 2, 0}),
    filter("gauss", kGauss, 8, IMG_FMT_BGR24, {1.5, 1.9, 0}),
    filter("gauss", kGauss, 16, IMG_FMT_MONO16, {3.5, 4.5, 0}),
    filter("box", kBox, 8, IMG_FMT_MONO8, {2.5, 3.5, 0}),
    filter("five-tap", kFiveTaps, 8, IMG_FMT_MONO8, {1.3, 2, 0}),
#endif
  };
  return table;
}

}  // namespace vistrel::core::bench
