// Converts finished pixels to other formats.
#if defined(VISTREL_PIXELS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PIXELS_INL_H
#undef VISTREL_PIXELS_INL_H
#else
#define VISTREL_PIXELS_INL_H
#endif

#include <utility>

#include "output/alpha-inl.h"
#include "output/bt709-inl.h"
#include "output/luma-inl.h"
#include "output/pixels.h"
#include "output/planes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// A block is a struct with a function `convert` that turns kUnits units, pixels or pairs of them,
// of kSources rows into kResults rows. A unit has kSourceBytes in each source and kResultBytes in
// each result.
template <class Block>
struct BlockRows {
  const uint8_t* sources[Block::kSources];
  uint8_t* results[Block::kResults];

  VISTREL_INLINE void convertAt(size_t x) const {
    convertAt(x, std::make_index_sequence<Block::kSources>(),
              std::make_index_sequence<Block::kResults>());
  }

  // Loops over the arrays would become vector code that keeps them in memory.
  template <size_t... source, size_t... result>
  VISTREL_INLINE void convertAt(size_t x, std::index_sequence<source...>,
                                std::index_sequence<result...>) const {
    Block::convert({sources[source] + Block::kSourceBytes * x...},
                   {results[result] + Block::kResultBytes * x...});
  }

  // For fewer units than a block has.
  void convertFew(size_t n) const {
    uint8_t from[Block::kSources][Block::kSourceBytes * Block::kUnits] = {};
    uint8_t to[Block::kResults][Block::kResultBytes * Block::kUnits];
    BlockRows tile;
    for (size_t i = 0; i < Block::kSources; ++i) {
      std::memcpy(from[i], sources[i], Block::kSourceBytes * n);
      tile.sources[i] = from[i];
    }
    for (size_t i = 0; i < Block::kResults; ++i) tile.results[i] = to[i];
    tile.convertAt(0);
    for (size_t i = 0; i < Block::kResults; ++i)
      std::memcpy(results[i], to[i], Block::kResultBytes * n);
  }

  // The last block overlaps the one before it.
  void convert(size_t n) const {
    constexpr size_t step = Block::kUnits;
    size_t x = 0;
    for (; x + step <= n; x += step) convertAt(x);
    if (x == n) return;
    if (n > step)
      convertAt(n - step);
    else
      convertFew(n);
  }
};

VISTREL_INLINE const uint8_t* bytes(const void* p) { return static_cast<const uint8_t*>(p); }
VISTREL_INLINE uint8_t* bytes(void* p) { return static_cast<uint8_t*>(p); }

template <class Block>
void convertPixels(const void* pixels, size_t n, void* result) {
  BlockRows<Block>{{bytes(pixels)}, {bytes(result)}}.convert(n);
}

template <class Block>
void convertToPlanes(const void* pixels, size_t n, void* const planes[3]) {
  BlockRows<Block>{{bytes(pixels)}, {bytes(planes[0]), bytes(planes[1]), bytes(planes[2])}}.convert(
      n);
}

inline void convertPairsTo709(const void* pixels, size_t pairs, void* luma, const PairSums& sums) {
  BlockRows<PairOf709>{{bytes(pixels)}, {bytes(luma), bytes(sums.blue), bytes(sums.red)}}.convert(
      pairs);
}

inline void convertToChromaPairs(const PairSums& upper, const PairSums& lower, size_t blocks,
                                 void* cbcr) {
  BlockRows<Chroma709<1>>{
      {bytes(upper.blue), bytes(lower.blue), bytes(upper.red), bytes(lower.red)}, {bytes(cbcr)}}
      .convert(blocks);
}

inline void convertToChromaPlanes(const PairSums& upper, const PairSums& lower, size_t blocks,
                                  void* cb, void* cr) {
  BlockRows<Chroma709<2>>{
      {bytes(upper.blue), bytes(lower.blue), bytes(upper.red), bytes(lower.red)},
      {bytes(cb), bytes(cr)}}
      .convert(blocks);
}

const PixelFormatKernels kPixelFormatKernels = {convertPixels<WithAlpha<3>>,
                                                convertPixels<WithAlpha<0>>,
                                                convertPixels<Luma<uint8_t>>,
                                                convertPixels<Luma<uint16_t>>,
                                                convertToPlanes<Planes<uint8_t>>,
                                                convertToPlanes<Planes<uint16_t>>,
                                                convertPairsTo709,
                                                convertToChromaPairs,
                                                convertToChromaPlanes,
                                                convertToPlanes<Planes709>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
