#include "bench/rows.h"

#include "bench/filter.h"
#include "bench/peers.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::core::bench {

namespace {

constexpr Conversion bilinear(unsigned depth, uint32_t format, unsigned factor = 1,
                              uint32_t reduction = VISTREL_WINDOW_HIGH) {
  return {"bilinear", VISTREL_BILINEAR, depth, format, factor, reduction};
}

// bits: the significant ones. All algorithms take 10. threshold: of the edge demosaic.
constexpr Conversion colour(const char* name, uint32_t algorithm, unsigned depth,
                            unsigned bits = 10, uint32_t threshold = 0) {
  return {name, algorithm, depth, VISTREL_BGR24, 1, VISTREL_WINDOW_HIGH, bits, threshold};
}

constexpr Conversion directional(unsigned depth, unsigned bits = 12) {
  return colour("directional", VISTREL_DIRECTIONAL, depth, bits);
}

constexpr Conversion mono(unsigned depth, unsigned factor,
                          uint32_t reduction = VISTREL_WINDOW_HIGH) {
  return {"mono", 0, depth, VISTREL_MONO8, factor, reduction};
}

#if VISTREL_BENCH_OPENCV
Row filter(const char* name, uint32_t which, unsigned depth, uint32_t format, Target target) {
  const Peer peer{which == kBox ? "OpenCV boxFilter" : "OpenCV filter2D", openCvFilter};
  return {{name, which, depth, format, 1, VISTREL_WINDOW_HIGH, 10}, peer, target, makeFilter};
}
#endif

}  // namespace

const std::vector<Row>& rows() {
  static const std::vector<Row> table = {
#if VISTREL_BENCH_OPENCV
    {bilinear(8, VISTREL_BGR24), {"OpenCV bilinear", openCvBilinear}, {1.5, 1.9, 3}},
    {bilinear(8, VISTREL_RGB24), {"OpenCV bilinear", openCvBilinear}, {1.5, 2.1, 3}},
    {bilinear(8, VISTREL_BGRA32), {"OpenCV bilinear BGRA", openCvBilinearBgra}, {1.4, 1.8, 2.1}},
    {bilinear(8, VISTREL_RGBA32), {"OpenCV bilinear BGRA", openCvBilinearBgra}, {1.6, 2.1, 2.6}},
    {bilinear(8, VISTREL_GRAY8), {"OpenCV bilinear, gray", openCvBilinearGray}, {2.5, 3.3, 5}},
    {bilinear(8, VISTREL_BGR24, 2), {"OpenCV bilinear, AREA", openCvBilinearArea}, {2.4, 3.2, 5}},
    {bilinear(8, VISTREL_BGR24, 3), {"OpenCV bilinear, AREA", openCvBilinearArea}, {2.5, 3.5, 0}},
    {bilinear(8, VISTREL_BGR24, 4), {"OpenCV bilinear, AREA", openCvBilinearArea}, {2.5, 3.5, 0}},
#endif
#if VISTREL_BENCH_SWSCALE
    {bilinear(16, VISTREL_BGR24), {"libswscale bayer16", swscaleBilinear}, {2.1, 2.5, 4.2}},
    {bilinear(16, VISTREL_BGR24, 1, VISTREL_TABLE),
     {"libswscale bayer16", swscaleBilinear, false},
     {0.7, 1, 2}},
#endif
#if VISTREL_BENCH_DC1394
    {bilinear(16, VISTREL_BGR48), {"libdc1394 bilinear", dc1394Bilinear}, {1.7, 2.2, 3.2}},
#endif
#if VISTREL_BENCH_OPENCV
    {colour("near", VISTREL_NEAR, 8), {"OpenCV edge-aware", openCvEdgeAware}, {1.6, 1.9, 2.9}},
    {colour("near", VISTREL_NEAR, 16), {"OpenCV edge-aware 16u", openCvEdgeAware}, {4.7, 6, 7.5}},
#endif
#if VISTREL_BENCH_DC1394
    {colour("edge", VISTREL_EDGE, 8, 10, 100),
     {"libdc1394 EDGESENSE", dc1394EdgeSense},
     {3.5, 4.5, 5.5}},
    {colour("edge", VISTREL_EDGE, 16, 10, 100),
     {"libdc1394 EDGESENSE", dc1394EdgeSense},
     {2.8, 3.5, 4}},
    {colour("laroche", VISTREL_LAROCHE, 8), {"libdc1394 HQLINEAR", dc1394HqLinear}, {5.5, 7, 8.5}},
    {colour("laroche", VISTREL_LAROCHE, 16), {"libdc1394 HQLINEAR", dc1394HqLinear}, {3.7, 4.7, 6}},
    {colour("hamilton", VISTREL_HAMILTON, 8),
     {"libdc1394 HQLINEAR", dc1394HqLinear},
     {5.5, 7, 8.5}},
    {colour("hamilton", VISTREL_HAMILTON, 16),
     {"libdc1394 HQLINEAR", dc1394HqLinear},
     {3.7, 4.7, 6}},
#endif
#if VISTREL_BENCH_OPENCV
    {colour("variable-gradients", VISTREL_VNG, 8),
     {"OpenCV VNG", openCvVariableGradients},
     {2.5, 3, 4}},
#endif
#if VISTREL_BENCH_DC1394
    {colour("variable-gradients", VISTREL_VNG, 16),
     {"libdc1394 VNG", dc1394VariableGradients},
     {30, 34, 45}},
    {colour("cok", VISTREL_COK, 8), {"libdc1394 EDGESENSE", dc1394EdgeSense}, {3, 4, 5}},
    {colour("cok", VISTREL_COK, 16), {"libdc1394 EDGESENSE", dc1394EdgeSense}, {3, 4, 5}},
#endif
#if VISTREL_BENCH_LIBRAW
    {colour("grouping", VISTREL_GROUPING, 8), {"LibRaw PPG", librawPixelGrouping}, {14, 18, 20}},
    {colour("grouping", VISTREL_GROUPING, 16), {"LibRaw PPG", librawPixelGrouping}, {14, 18, 20}},
    {colour("kimmel", VISTREL_KIMMEL, 8), {"LibRaw AHD", librawAhd}, {3.3, 4, 5}},
    {colour("kimmel", VISTREL_KIMMEL, 16), {"LibRaw AHD", librawAhd}, {3.3, 4, 5}},
    {colour("ahd", VISTREL_AHD, 8, 12), {"LibRaw AHD", librawAhd}, {22, 28, 36}},
    {colour("ahd", VISTREL_AHD, 16, 12), {"LibRaw AHD", librawAhd}, {10, 14, 18}},
    {directional(8), {"LibRaw AHD", librawAhd}, {18, 26, 34}},
    {directional(16), {"LibRaw AHD", librawAhd}, {13, 23, 30}},
    {directional(16, 14), {"LibRaw AHD", librawAhd}, {13, 15, 18}},
    {directional(16, 16), {"LibRaw AHD", librawAhd}, {13, 15, 18}},
    {directional(8), {"LibRaw PPG", librawPixelGrouping}, {5, 8, 10}},
    {directional(16), {"LibRaw PPG", librawPixelGrouping}, {5, 7, 9}},
    {directional(16, 14), {"LibRaw PPG", librawPixelGrouping}, {5, 5.5, 6.5}},
    {directional(16, 16), {"LibRaw PPG", librawPixelGrouping}, {5, 5.5, 6.5}},
#endif
#if VISTREL_BENCH_OPENCV
    {mono(8, 1), {"OpenCV copyTo", openCvCopy}, {0.95, 1.0, 0}},
    {mono(8, 2), {"OpenCV AREA", openCvArea}, {0.9, 1.1, 0}},
    {mono(8, 3), {"OpenCV AREA", openCvArea}, {3, 5, 0}},
    {mono(8, 4), {"OpenCV AREA", openCvArea}, {5, 8, 0}},
    {mono(16, 1), {"OpenCV convertTo", openCvConvert}, {1.1, 1.3, 0}},
    {mono(16, 2), {"OpenCV AREA, convertTo", openCvAreaConvert}, {1.3, 1.7, 0}},
    {mono(16, 1, VISTREL_TABLE), {"OpenCV LUT 8u", openCvTable}, {0.8, 0.9, 0}},
    filter("gauss", kGauss, 8, VISTREL_MONO8, {1.5, 2, 0}),
    filter("gauss", kGauss, 8, VISTREL_BGR24, {1.5, 1.9, 0}),
    filter("gauss", kGauss, 16, VISTREL_MONO16, {3.5, 4.5, 0}),
    filter("box", kBox, 8, VISTREL_MONO8, {2.5, 3.5, 0}),
    filter("five-tap", kFiveTaps, 8, VISTREL_MONO8, {1.3, 2, 0}),
#endif
  };
  return table;
}

}  // namespace vistrel::core::bench
