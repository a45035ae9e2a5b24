#include "output/ycc420_rows.h"

#include <cstring>

namespace vistrel::core {

Ycc420Rows::Ycc420Rows(const Ycc420Planes& planes, size_t width, size_t height, Arena& arena)
    : kernels_(pixelFormatKernels()), inPairs_(planes.inPairs), height_(height),
      blocks_((width + 1) / 2), luma_(planes.luma, 2 * blocks_, arena),
      first_(planes.chroma[0], 2 * blocks_, arena), second_(planes.chroma[1], blocks_, arena) {
  for (PairSums& sums : sums_) sums = {arena.take<int16_t>(blocks_), arena.take<int16_t>(blocks_)};
}

void Ycc420Rows::begin(size_t y) {
  y_ = y;
  pairs_ = 0;
  isUpper_ = y % 2 == 0;
  luma_.begin(y);
}

void Ycc420Rows::append(const void* pixels, size_t n) {
  const auto* next = static_cast<const unsigned char*>(pixels);
  if (isWaiting_ && n > 0) {
    std::memcpy(waiting_ + 3, next, 3);
    convert(waiting_, 1);
    isWaiting_ = false;
    next += 3, --n;
  }
  convert(next, n / 2);
  if (n % 2 == 0) return;
  std::memcpy(waiting_, next + 3 * (n - 1), 3);
  isWaiting_ = true;
}

void Ycc420Rows::convert(const unsigned char* pixels, size_t pairs) {
  kernels_.pairsTo709(pixels, pairs, luma(), sums());
  converted(pairs);
}

// Completes a row of odd width. Rows of pairs are whole pairs, so their luma repeats too.
void Ycc420Rows::repeatLast() {
  unsigned char pair[2];
  std::memcpy(waiting_ + 3, waiting_, 3);
  kernels_.pairsTo709(waiting_, 1, pair, sums());
  const size_t n = inPairs_ ? 2 : 1;
  std::memcpy(luma(), pair, n);
  luma_.filled(n);
  isWaiting_ = false;
}

void Ycc420Rows::end() {
  if (isWaiting_) repeatLast();
  luma_.end();
  if (!isUpper_ || y_ + 1 == height_) makeChroma();
}

// A last row without a partner is both the upper and the lower one.
void Ycc420Rows::makeChroma() {
  const PairSums &upper = sums_[0], &lower = sums_[isUpper_ ? 0 : 1];
  first_.begin(y_ / 2);
  if (inPairs_) {
    kernels_.chromaPairs709(upper, lower, blocks_, first_.next());
    first_.filled(2 * blocks_);
    return first_.end();
  }
  second_.begin(y_ / 2);
  kernels_.chromaPlanes709(upper, lower, blocks_, first_.next(), second_.next());
  first_.filled(blocks_);
  second_.filled(blocks_);
  first_.end();
  second_.end();
}

}  // namespace vistrel::core
