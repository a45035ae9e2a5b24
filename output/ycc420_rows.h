// The rows of an image of luma, and of chroma that blocks of 2x2 pixels share.
#pragma once

#include "output/pixel_rows.h"

namespace vistrel::core {

struct Ycc420Planes {
  PlaneMemory luma;
  PlaneMemory chroma[2];  // Cb and Cr; if they come in pairs, only the first one
  bool inPairs;
};

// Takes pixels of bytes blue, green, red. The first row must be even.
class Ycc420Rows final : public PixelRows {
 public:
  Ycc420Rows(const Ycc420Planes& planes, size_t width, size_t height, Arena& arena);

  void* inPlace(size_t) override { return nullptr; }
  void begin(size_t y) override;
  void* next() override { return nullptr; }
  void append(const void* pixels, size_t n) override;
  void end() override;

  // Where the row's next pairs go, for whoever converts them; converted() says that n of them are
  // there.
  unsigned char* luma() const { return luma_.next(); }
  PairSums sums() const {
    const PairSums& row = sums_[isUpper_ ? 0 : 1];
    return {row.blue + pairs_, row.red + pairs_};
  }
  void converted(size_t n) {
    luma_.filled(2 * n);
    pairs_ += n;
  }

 private:
  void convert(const unsigned char* pixels, size_t pairs);
  void repeatLast();
  void makeChroma();

  const PixelFormatKernels& kernels_;
  bool inPairs_;
  size_t height_, blocks_;  // blocks: of a row of them
  PlaneRows luma_, first_, second_;
  PairSums sums_[2];          // of the upper and the lower row
  unsigned char waiting_[6];  // a pair's left pixel may come before its right one
  bool isWaiting_ = false;
  bool isUpper_ = false;
  size_t y_ = 0;
  size_t pairs_ = 0;  // of this row so far
};

}  // namespace vistrel::core
