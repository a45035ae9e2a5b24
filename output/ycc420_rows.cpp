#include "output/ycc420_rows.h"

#include <cstring>

namespace vistrel::core {

Ycc420Rows::Ycc420Rows(const Ycc420Planes& planes, size_t width, size_t height, Arena& arena)
    : kernels_(pixelFormatKernels()), inPairs_(planes.inPairs), width_(width), height_(height),
      luma_(planes.luma, planes.inPairs ? width + width % 2 : width, arena),
      first_(planes.chroma[0], width + 1, arena), second_(planes.chroma[1], width + 1, arena),
      upper_(arena.take<unsigned char>(3 * width)) {}

void Ycc420Rows::begin(size_t y) {
  x_ = 0;
  isUpper_ = y % 2 == 0;
  isLower_ = !isUpper_ || y + 1 == height_;
  luma_.begin(y);
  if (!isLower_) return;
  first_.begin(y / 2);
  if (!inPairs_) second_.begin(y / 2);
}

void Ycc420Rows::append(const void* pixels, size_t n) {
  const auto* const bytes = static_cast<const unsigned char*>(pixels);
  kernels_.luma709(bytes, n, luma_.next());
  luma_.filled(n);
  if (inPairs_ && width_ % 2 == 1 && x_ + n == width_) repeatLast(bytes + 3 * (n - 1));
  if (isUpper_) std::memcpy(upper_ + 3 * x_, bytes, 3 * n);
  if (isLower_) appendLower(bytes, n);
  x_ += n;
}

// Rows of pairs are whole pairs.
void Ycc420Rows::repeatLast(const unsigned char* pixel) {
  kernels_.luma709(pixel, 1, luma_.next());
  luma_.filled(1);
}

void Ycc420Rows::appendLower(const unsigned char* pixels, size_t n) {
  const size_t end = x_ + n;
  size_t x = x_;
  if (x % 2 == 1 && n > 0) {
    std::memcpy(waiting_ + 3, pixels, 3);
    makeChroma(x - 1, waiting_, 2);
    ++x, pixels += 3;
  }
  const size_t whole = end == width_ ? end - x : (end - x) / 2 * 2;
  makeChroma(x, pixels, whole);
  if (x + whole < end) std::memcpy(waiting_, pixels + 3 * whole, 3);
}

// Makes the chroma of n columns from an even one on. lower: their pixels in the lower row.
void Ycc420Rows::makeChroma(size_t x, const unsigned char* lower, size_t n) {
  if (n == 0) return;
  const unsigned char* const upper = upper_ + 3 * x;
  const size_t blocks = (n + 1) / 2;
  if (inPairs_) {
    kernels_.chromaPairs709(upper, lower, n, first_.next());
    return first_.filled(2 * blocks);
  }
  kernels_.chromaPlanes709(upper, lower, n, first_.next(), second_.next());
  first_.filled(blocks);
  second_.filled(blocks);
}

void Ycc420Rows::end() {
  luma_.end();
  if (!isLower_) return;
  first_.end();
  if (!inPairs_) second_.end();
}

}  // namespace vistrel::core
