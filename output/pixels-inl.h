// Converts finished pixels to other formats.
#if defined(VISTREL_PIXELS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PIXELS_INL_H
#undef VISTREL_PIXELS_INL_H
#else
#define VISTREL_PIXELS_INL_H
#endif

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
    BlockRows here = *this;
    for (auto& source : here.sources) source += Block::kSourceBytes * x;
    for (auto& result : here.results) result += Block::kResultBytes * x;
    Block::convert(here.sources, here.results);
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

template <class T>
void convertToPlanes(const void* pixels, size_t n, void* const planes[3]) {
  BlockRows<Planes<T>>{{bytes(pixels)}, {bytes(planes[0]), bytes(planes[1]), bytes(planes[2])}}
      .convert(n);
}

// Repeats the last of an odd number of pixels, to make a pair.
struct LastTwice {
  uint8_t pair[6];
  LastTwice(const uint8_t* row, size_t n) {
    std::memcpy(pair, row + 3 * (n - 1), 3);
    std::memcpy(pair + 3, pair, 3);
  }
};

inline void convertToChromaPairs(const void* upper, const void* lower, size_t n, void* cbcr) {
  BlockRows<ChromaPairs>{{bytes(upper), bytes(lower)}, {bytes(cbcr)}}.convert(n / 2);
  if (n % 2 == 0) return;
  const LastTwice above(bytes(upper), n), below(bytes(lower), n);
  BlockRows<ChromaPairs>{{above.pair, below.pair}, {bytes(cbcr) + (n - 1)}}.convert(1);
}

inline void convertToChromaPlanes(const void* upper, const void* lower, size_t n, void* cb,
                                  void* cr) {
  BlockRows<ChromaPlanes>{{bytes(upper), bytes(lower)}, {bytes(cb), bytes(cr)}}.convert(n / 2);
  if (n % 2 == 0) return;
  const LastTwice above(bytes(upper), n), below(bytes(lower), n);
  BlockRows<ChromaPlanes>{{above.pair, below.pair}, {bytes(cb) + n / 2, bytes(cr) + n / 2}}.convert(
      1);
}

const PixelFormatKernels kPixelFormatKernels = {
    convertPixels<WithAlpha<3>>,   convertPixels<WithAlpha<0>>, convertPixels<Luma<uint8_t>>,
    convertPixels<Luma<uint16_t>>, convertToPlanes<uint8_t>,    convertToPlanes<uint16_t>,
    convertPixels<Luma709>,        convertToChromaPairs,        convertToChromaPlanes};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
