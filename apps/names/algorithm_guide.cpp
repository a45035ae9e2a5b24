#include "apps/names/algorithm_guide.h"

#include <algorithm>
#include <iterator>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

// CPSNR: the means of `vistrel report --reference` over eight images of the Kodak set (03, 04, 05,
// 08, 15, 19, 21, 23). Times: 12 megapixels of at most 12 bits, in 16-bit samples, to BGR24 with
// AVX2, by `vistrel-bench '16/BGR24/1x1/12MP' --level avx2`.
constexpr AlgorithmGuide kGuides[] = {
    {VISTREL_BILINEAR, "live view: the fastest; fine coloured patterns", 29.71, 0.306},
    {VISTREL_EDGE, "stills in less time", 34.48, 0.879},
    {VISTREL_NEAR, "live view, with edges closer to their places", 30.27, 0.510},
    {VISTREL_LAROCHE, "10 bits: the best for its time", 31.90, 0.435},
    {VISTREL_HAMILTON, "10 bits: laroche is as fast and closer", 30.96, 0.454},
    {VISTREL_VNG, "10 bits: the closest of these", 33.20, 1.728},
    {VISTREL_COK, "10 bits: laroche is faster and closer", 30.97, 0.805},
    {VISTREL_KIMMEL, "10 bits: laroche is as close; the slowest", 31.84, 7.144},
    {VISTREL_GROUPING, "10 bits: laroche is faster and closer", 30.26, 0.921},
    {VISTREL_AHD, "pictures as many other programs make them", 37.46, 2.356},
    {VISTREL_DIRECTIONAL, "still pictures, edges, stars: the closest", 40.47, 1.460},
};

}  // namespace

const AlgorithmGuide* guideTo(uint32_t code) {
  const auto guide = std::find_if(std::begin(kGuides), std::end(kGuides),
                                  [code](const AlgorithmGuide& g) { return g.code == code; });
  return guide == std::end(kGuides) ? nullptr : guide;
}

}  // namespace vistrel::app
